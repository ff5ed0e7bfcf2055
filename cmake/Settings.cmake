# Compiler settings shared by every target of ours. Warnings are errors for our own code only.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

option(ZAN_BUILD_TESTS "Build the tests" ON)
option(ZAN_BUILD_BENCHMARKS "Build the benchmark programs" OFF)
option(ZAN_BUILD_FUZZERS "Build the fuzz targets (needs clang)" OFF)
option(ZAN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

find_program(ZAN_CCACHE ccache)
if(ZAN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZAN_CCACHE})
endif()

# mold links in a tenth of the time; the default linker does where it is missing.
find_program(ZAN_MOLD mold)
if(ZAN_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
add_compile_options(-fno-semantic-interposition -fvisibility-inlines-hidden)
add_compile_definitions(QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(ZAN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
