# Compiler settings shared by every target of ours. Warnings are errors for our own code only.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

# Installed programs find our libraries beside them, wherever the whole is put.
include(GNUInstallDirs)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
set(ZAN_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/zanbench)

# What the moc reads of a folder does not wait for the libraries that the folder links.
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)

option(ZAN_BUILD_TESTS "Build the tests" ON)
option(ZAN_BUILD_BENCHMARKS "Build the benchmark programs" OFF)
option(ZAN_BUILD_FUZZERS "Build the fuzz targets (needs clang)" OFF)
option(ZAN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

option(ZAN_UNITY "Compile the files of a folder in batches: a cold build in a fraction of the time" OFF)
# Folders whose files use the same names for tables of their own, each in its file, and so cannot share a batch.
set(ZAN_SEPARATE_FOLDERS script display zandata livedata dialogs window surface wrappers document halyard trellis binding history)

find_program(ZAN_CCACHE ccache)
if(ZAN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZAN_CCACHE})
endif()

# mold links in a tenth of the time; the default linker does where it is missing.
find_program(ZAN_MOLD mold)
if(ZAN_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow
                    "$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual>")
# Errors where they are looked for; an optimiser's false alarm, and one that the sanitizers' own code sets off, does not
# keep a user from a program.
if(CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT ZAN_SANITIZE)
  add_compile_options(-Werror)
endif()
add_compile_options(-fno-semantic-interposition "$<$<COMPILE_LANGUAGE:CXX>:-fvisibility-inlines-hidden>")
add_compile_definitions(QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# What every test runs under: no display, a known scale, no messages switched on or off by the machine. Fonts and
# their caches belong to libraries below us; what they keep until the end is no leak of ours.
set(ZAN_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen"
    "QT_LOGGING_RULES="
    "QT_SCALE_FACTOR=1"
    "LC_ALL=C.UTF-8"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tools/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1")

if(ZAN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# Fuzz targets: everything they call is watched too, and a finding ends the run.
if(ZAN_BUILD_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
