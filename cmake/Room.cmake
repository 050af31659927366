# A room is a folder that is one static library. It links what it uses, and its files are included from the project's
# root, so that every include names its room; ./check refuses an include that no link line allows.

# tessary_room(TARGET SOURCES files... [PUBLIC libraries...] [PRIVATE libraries...])
function(tessary_room target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;PUBLIC;PRIVATE")
    add_library(${target} STATIC ${arg_SOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} tessary_warnings)
    tessary_compiled_toolkit(${target})
endfunction()

# tessary_qml_room(TARGET URI uri [TYPES_FROM modules...] QML files... [SOURCES files...] [RESOURCES files...]
#                  [PUBLIC libraries...] [PRIVATE libraries...]): the same with a QML module in it, whose C++ types have
# properties of the types of other modules. Who shows what is in it links TARGETplugin.
function(tessary_qml_room target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "TYPES_FROM;QML;SOURCES;RESOURCES;PUBLIC;PRIVATE")
    string(REPLACE "." "/" path ${arg_URI})
    qt_add_qml_module(${target}
        URI ${arg_URI}
        VERSION 1.0
        STATIC
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${path}
        IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
        DEPENDENCIES QtQuick ${arg_TYPES_FROM}
        QML_FILES ${arg_QML}
        SOURCES ${arg_SOURCES}
        RESOURCES ${arg_RESOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${arg_PUBLIC} Qt6::Quick PRIVATE ${arg_PRIVATE})
    target_link_libraries(${target}plugin PUBLIC ${target})
    target_compile_definitions(${target} PRIVATE
        "$<TARGET_PROPERTY:tessary_warnings,INTERFACE_COMPILE_DEFINITIONS>")
    tessary_compiled_toolkit(${target})

    # What the toolkit generates is compiled into the same target. It is not ours, so the warnings are asked of each of our
    # files; there is a lot of it, so it is compiled several files at a time; and it finds our headers by their names alone.
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
    foreach(source IN LISTS arg_SOURCES)
        get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR}/${source} DIRECTORY)
        target_include_directories(${target} PRIVATE ${folder})
    endforeach()
    set_source_files_properties(${arg_SOURCES} PROPERTIES
        COMPILE_OPTIONS "$<TARGET_PROPERTY:tessary_warnings,INTERFACE_COMPILE_OPTIONS>"
        SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# tessary_write_arrows(FILE): one line for each target of the project: its name, its folder, what it links, and what it
# hands on to who links it. Called when all of them are there.
function(tessary_write_arrows file)
    set(lines)
    set(folders ${PROJECT_SOURCE_DIR})
    while(folders)
        list(POP_FRONT folders folder)
        get_property(inner DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
        list(APPEND folders ${inner})
        get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
        foreach(target IN LISTS targets)
            get_target_property(type ${target} TYPE)
            if(type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
                get_target_property(links ${target} LINK_LIBRARIES)
                get_target_property(handed_on ${target} INTERFACE_LINK_LIBRARIES)
                file(RELATIVE_PATH room ${PROJECT_SOURCE_DIR} ${folder})
                string(APPEND lines "${target} ${room} ${links} ${handed_on}\n")
            endif()
        endforeach()
    endwhile()
    file(WRITE ${file} "${lines}")
endfunction()
