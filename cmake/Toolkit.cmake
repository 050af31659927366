# Nearly all of the time of a compilation would go into the toolkit's headers. Those that most sources include are compiled
# once for the program, and once for the tests. A source includes what it uses all the same: it is analysed without these.

# They link as little as they can, since what is defined for them must be defined for who reuses them, too.
function(tessary_toolkit target warnings)
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/${target}.cpp CONTENT "")
    add_library(${target} STATIC ${CMAKE_BINARY_DIR}/${target}.cpp)
    target_link_libraries(${target} PRIVATE Qt6::Core ${warnings})
    foreach(library Gui Network OpenGL Qml QmlIntegration QmlModels Quick)
        target_include_directories(${target} SYSTEM PRIVATE
            $<TARGET_PROPERTY:Qt6::${library},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
    target_precompile_headers(${target} PRIVATE
        <algorithm> <chrono> <functional> <memory> <optional> <stop_token> <vector>
        <QtCore/QFile> <QtCore/QFuture> <QtCore/QJsonObject> <QtCore/QTimer> <QtCore/QUrl> <QtCore/QVariant>
        <QtQml/qqmlprivate.h> <QtQuick/QQuickItem>)
endfunction()

tessary_toolkit(tessary_toolkit tessary_warnings)
tessary_toolkit(tessary_toolkit_of_tests tessary_test_warnings)

# tessary_compiled_toolkit(TARGETS...): for what is held to tessary_warnings.
function(tessary_compiled_toolkit)
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM tessary_toolkit)
    endforeach()
endfunction()
