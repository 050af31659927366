# tessary_test(name [LONG] [MUCH_MEMORY] LIBRARIES...): a test program of one file, name.cpp, run without a screen and apart
# from this machine's desktop. A skip is no pass. Under the sanitizers what it frees is overwritten, since Qt's libraries are
# not instrumented and would read it unnoticed; not with MUCH_MEMORY, since that takes too long where much is freed. A LONG
# one begins before the others.
function(tessary_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "LONG;MUCH_MEMORY" "" "")
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_UNPARSED_ARGUMENTS} Qt6::Test tessary_test_warnings)
    target_precompile_headers(${name} REUSE_FROM tessary_toolkit_of_tests)
    # There is nothing in it; reading the compiled headers would be all of the work.
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    target_compile_definitions(${name} PRIVATE TESSARY_SOURCES="${PROJECT_SOURCE_DIR}")
    # The waiting macros of newer Qt convert durations implicitly.
    set_source_files_properties(${name}.cpp PROPERTIES COMPILE_OPTIONS -Wno-conversion)
    # Apart from the programs, so that no test finds their resources beside itself by chance.
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    set(environment QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software)
    if(TESSARY_SANITIZE AND NOT arg_MUCH_MEMORY)
        list(APPEND environment ASAN_OPTIONS=max_free_fill_size=1048576:free_fill_byte=221)
    endif()
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/sealed $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 300
        FAIL_REGULAR_EXPRESSION "SKIP   :"
        ENVIRONMENT "${environment}")
    if(arg_LONG)
        set_tests_properties(${name} PROPERTIES COST 1)
    endif()
endfunction()
