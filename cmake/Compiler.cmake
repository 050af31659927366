set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# What our own code is held to; the generated code of the toolkit is not ours. The presets make errors of warnings.
# Tests write names and texts as they are.
add_library(tessary_test_warnings INTERFACE)
target_compile_options(tessary_test_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Woverloaded-virtual -Wcast-align -Wnull-dereference -Wformat=2)
target_compile_definitions(tessary_test_warnings INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_STRICT_ITERATORS)
add_library(tessary_warnings INTERFACE)
target_link_libraries(tessary_warnings INTERFACE tessary_test_warnings)
target_compile_definitions(tessary_warnings INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_URL_CAST_FROM_STRING)

option(TESSARY_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(TESSARY_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

add_compile_definitions(_GLIBCXX_ASSERTIONS) # a value that is not there, or an index outside, ends the program
# What people install is hardened as a distribution's own programs are.
add_compile_options("$<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
add_link_options($<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
