# tessary_test(name [BUS] LIBRARIES...): a test program of one file, name.cpp, run without a screen. With BUS it runs on
# a session bus of its own.
function(tessary_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "BUS" "" "")
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_UNPARSED_ARGUMENTS} Qt6::Test tessary_warnings)
    # The waiting macros of newer Qt convert durations implicitly.
    set_source_files_properties(${name}.cpp PROPERTIES COMPILE_OPTIONS -Wno-conversion)
    # Apart from the programs, so that no test finds their resources beside itself by chance.
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    set(launcher)
    if(arg_BUS)
        set(launcher dbus-run-session --)
    endif()
    add_test(NAME ${name} COMMAND ${launcher} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 120
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software")
endfunction()
