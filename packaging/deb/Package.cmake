# The Debian package: `cpack` in the folder of a release build.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessary-macos-uploader)
set(CPACK_PACKAGE_VENDOR Tessary)
set(CPACK_PACKAGE_CONTACT "Tessary <support@tessary.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "put videos into a workspace's library")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON) # of what was built here; the transfer tool stays as it came
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://tessary.example/uploader")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Members of a video workspace sign in with the workspace's API key, pick a
video or a pair of left-eye and right-eye files, say how its frames are laid
out, and press Upload. The program copies files of any size to cloud storage
and registers the video in the library.")

# Libraries are found from the binaries. What is loaded at run time is not: QML modules, the platforms, drawings.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(runtime_packages
    ca-certificates libqt6svg6 libsecret-1-0 qt6-qpa-plugins qt6-wayland
    qml6-module-qt-labs-folderlistmodel qml6-module-qtqml qml6-module-qtqml-models
    qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-controls
    qml6-module-qtquick-dialogs qml6-module-qtquick-layouts qml6-module-qtquick-templates
    qml6-module-qtquick-window)
list(JOIN runtime_packages ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-gtk-platformtheme, xdg-desktop-portal")

include(CPack)
