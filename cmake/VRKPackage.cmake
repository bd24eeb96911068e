# vrk_package(<target>
#             [SOURCES <file>...]      compiled into <target>
#             [HEADERS <file>...]      public: installed and included by the umbrella header
#             [TESTS <file>...])       GoogleTest sources of the folder's test program
#
# Declares the part of a library that lives in the calling folder. Every folder of the base
# layer and every package is declared this way, so that all are built, tested and installed
# alike. The folder's test program is named after the folder, e.g. thr_tests.
function(vrk_package target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS;TESTS")
  target_sources(${target} PRIVATE ${arg_SOURCES} ${arg_HEADERS})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
  foreach(header IN LISTS arg_HEADERS)
    set_property(GLOBAL APPEND PROPERTY VRK_PUBLIC_HEADERS
                 ${CMAKE_CURRENT_SOURCE_DIR}/${header})
  endforeach()
  if(arg_TESTS AND VRK_BUILD_TESTS)
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    string(REPLACE "/" "_" name "${folder}")
    if(VRK_TEST_FOLDERS AND NOT name IN_LIST VRK_TEST_FOLDERS)
      return()
    endif()
    add_executable(${name}_tests ${arg_TESTS})
    target_link_libraries(${name}_tests PRIVATE VRKLnuBasicUtils VRKTesting GTest::gmock_main)
    gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST
                         PROPERTIES LABELS ${name} ENVIRONMENT "VRK_TEST_FOLDER=${name}")
  endif()
endfunction()

# Writes VRKLnuBasicUtils.h, which includes every public header in the order the folders
# were declared (the base layer first), so that it can never miss one.
function(vrk_generate_umbrella_header)
  get_property(headers GLOBAL PROPERTY VRK_PUBLIC_HEADERS)
  set(includes "")
  foreach(header IN LISTS headers)
    get_filename_component(name ${header} NAME)
    string(APPEND includes "#include \"${name}\"\n")
  endforeach()
  set(umbrella ${PROJECT_BINARY_DIR}/include/VRKLnuBasicUtils/VRKLnuBasicUtils.h)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/VRKLnuBasicUtils.h.in ${umbrella} @ONLY)
  target_sources(VRKLnuBasicUtils PRIVATE ${umbrella})
  target_include_directories(VRKLnuBasicUtils
                             PUBLIC $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>)
  set_property(GLOBAL APPEND PROPERTY VRK_PUBLIC_HEADERS ${umbrella})
endfunction()
