# One folder under src/ is one object library `zan_<folder>`; the libraries that ship are put together from them.

# zan_folder(<name> [MOC] [DEPENDS <folder>...] [LINK <target>...])
# Every .cpp of the current folder and of its inner rooms becomes part of zan_<name>.
function(zan_folder name)
  cmake_parse_arguments(FOLDER "MOC" "" "DEPENDS;LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp
       ${CMAKE_CURRENT_SOURCE_DIR}/*/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h
       ${CMAKE_CURRENT_SOURCE_DIR}/*/*.h)
  add_library(zan_${name} OBJECT ${sources} ${headers})
  set_target_properties(zan_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(zan_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  foreach(dependency IN LISTS FOLDER_DEPENDS)
    if(TARGET zan_${dependency})
      target_include_directories(zan_${name} PUBLIC $<TARGET_PROPERTY:zan_${dependency},INTERFACE_INCLUDE_DIRECTORIES>)
    endif()
  endforeach()
  target_link_libraries(zan_${name} PUBLIC ${FOLDER_LINK})
  if(ZAN_UNITY AND NOT name IN_LIST ZAN_SEPARATE_FOLDERS)
    set_target_properties(zan_${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  endif()
  if(FOLDER_MOC)
    set_target_properties(zan_${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# zan_library(<target> FOLDERS <folder>... [LINK <target>...]): a shared library out of whole folders.
function(zan_library target)
  cmake_parse_arguments(LIBRARY "" "" "FOLDERS;LINK" ${ARGN})
  set(objects)
  foreach(folder IN LISTS LIBRARY_FOLDERS)
    list(APPEND objects $<TARGET_OBJECTS:zan_${folder}>)
  endforeach()
  add_library(${target} SHARED ${objects})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION} SOVERSION 0)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                                              $<INSTALL_INTERFACE:${ZAN_HEADERS}>)
  target_compile_features(${target} INTERFACE cxx_std_20)
  target_link_libraries(${target} PUBLIC ${LIBRARY_LINK})
  install(TARGETS ${target} EXPORT ZanBench)
  foreach(folder IN LISTS LIBRARY_FOLDERS)
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/${folder} DESTINATION ${ZAN_HEADERS} FILES_MATCHING PATTERN "*.h"
            PATTERN "plot" EXCLUDE) # what only our own code may include
  endforeach()
endfunction()

# zan_test(<name> [MOC] LINK <target>...): every .cpp of the current tests folder in one program, one CTest entry.
function(zan_test name)
  cmake_parse_arguments(TEST "MOC" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  add_executable(test_${name} ${sources} ${headers})
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(test_${name} PRIVATE ${TEST_LINK} GTest::gtest GTest::gmock)
  if(TEST_MOC)
    set_target_properties(test_${name} PROPERTIES AUTOMOC ON)
  endif()
  add_test(NAME ${name} COMMAND test_${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${ZAN_TEST_ENVIRONMENT}" TIMEOUT 900)
endfunction()

# zan_bench(<name> [MOC] LINK <target>...): every .cpp of the current bench folder in one program, bench_<name>.
function(zan_bench name)
  cmake_parse_arguments(BENCH "MOC" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  add_executable(bench_${name} ${sources} ${headers})
  target_link_libraries(bench_${name} PRIVATE ${BENCH_LINK} benchmark::benchmark)
  if(BENCH_MOC)
    set_target_properties(bench_${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# zan_fuzz(LINK <target>...): each .cpp of the current fuzz folder is a target of its own, fuzz_<its name in lower
# case>. Inputs to start from lie in corpus/<the same name>/ beside it, a dictionary in <the same name>.dict.
function(zan_fuzz)
  if(NOT TARGET fuzzers)
    add_custom_target(fuzzers)
  endif()
  cmake_parse_arguments(FUZZ "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  foreach(source IN LISTS sources)
    get_filename_component(stem ${source} NAME_WE)
    string(TOLOWER ${stem} stem)
    add_executable(fuzz_${stem} ${source})
    target_link_libraries(fuzz_${stem} PRIVATE ${FUZZ_LINK})
    target_include_directories(fuzz_${stem} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_options(fuzz_${stem} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers fuzz_${stem})
    # What tools/fuzz needs to know of the target: where its inputs and its dictionary lie.
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/fuzz/fuzz_${stem}.folder CONTENT "${CMAKE_CURRENT_SOURCE_DIR}\n")
  endforeach()
endfunction()
