# The Debian package: `cpack` in the folder of a release build.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessary-macos-uploader)
set(CPACK_PACKAGE_VENDOR Tessary)
set(CPACK_PACKAGE_CONTACT "Tessary <support@tessary.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "put videos into a workspace's library")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES OFF) # the program is stripped by its own install rule; the transfer tool stays as it came
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://tessary.example/uploader")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
" Members of a video workspace sign in with the workspace's API key, pick a
 video or a pair of left-eye and right-eye files, say how its frames are laid
 out, and press Upload. The program copies files of any size to cloud storage
 and registers the video in the library.")

# The libraries are found from the binaries; what is loaded at run time is not.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
list(JOIN TESSARY_RUNTIME_PACKAGES ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-gtk-platformtheme, qt6-xdgdesktopportal-platformtheme")
