# vrk_package(LIBRARY <VRKBas|VRKLnuBasicUtils|VRKLnuStore>
#             [DEPENDS <folder>...]        the folders whose headers this one may include
#             [SOURCES <file>...]          compiled into the library
#             [HEADERS <file>...]          public: installed and included by the umbrella header
#             [TESTS <file>...]            GoogleTest sources of the folder's test program
#             [TEST_DEPENDS <folder>...])  further folders the tests may include
#
# Declares the folder it is called from as a target of its own, vrk_<folder> (a folder's
# name is its path with '/' as '_': base_core, thr), that links the targets of the folders it
# depends on. Only those folders' directories are on its include path, so an include from a
# folder that is not a declared dependency fails to compile; vrk_check_includes() then checks
# every file, tests included, and refuses another folder's internal/ headers. The shared
# library named by LIBRARY is assembled from the folders' objects. The folder's test program
# is named after it, e.g. thr_tests.
function(vrk_package)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "LIBRARY" "DEPENDS;SOURCES;HEADERS;TESTS;TEST_DEPENDS")
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(REPLACE "/" "_" name "${folder}")
  set(target vrk_${name})

  # A folder of templates alone has no objects: an interface library.
  set(scope PUBLIC)
  if(arg_SOURCES)
    add_library(${target} OBJECT ${arg_SOURCES})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  else()
    add_library(${target} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${target} ${scope} $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
  list(TRANSFORM arg_DEPENDS PREPEND vrk_ OUTPUT_VARIABLE depends)
  target_link_libraries(${target} ${scope} ${depends})
  if(arg_HEADERS)
    target_sources(${target} ${scope} FILE_SET HEADERS FILES ${arg_HEADERS})
  endif()
  set_target_properties(${target} PROPERTIES VRK_FOLDER ${name} VRK_DEPENDS "${arg_DEPENDS}"
                                             VRK_TEST_DEPENDS "${arg_TEST_DEPENDS}"
                                             VRK_LIBRARY ${arg_LIBRARY})
  target_link_libraries(${arg_LIBRARY} PRIVATE $<BUILD_INTERFACE:${target}>)
  target_include_directories(${arg_LIBRARY} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
  set_property(GLOBAL APPEND PROPERTY VRK_FOLDERS ${name})

  if(arg_TESTS AND VRK_BUILD_TESTS)
    if(VRK_TEST_FOLDERS AND NOT name IN_LIST VRK_TEST_FOLDERS)
      return()
    endif()
    add_executable(${name}_tests ${arg_TESTS})
    target_link_libraries(${name}_tests PRIVATE ${arg_LIBRARY} VRKLnuBasicUtils VRKTesting
                                                GTest::gmock_main)
    # GoogleTest's headers are parsed once for all the test programs (see testing/).
    target_precompile_headers(${name}_tests REUSE_FROM VRKTesting)
    gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST
                         PROPERTIES LABELS ${name} ENVIRONMENT "VRK_TEST_FOLDER=${name}")
  endif()
endfunction()

# The folders that `folder` may include from: itself and its dependencies, transitively.
function(vrk_folder_closure folder out)
  set(closure ${folder})
  get_target_property(depends vrk_${folder} VRK_DEPENDS)
  foreach(depend IN LISTS depends)
    vrk_folder_closure(${depend} sub)
    list(APPEND closure ${sub})
  endforeach()
  list(REMOVE_DUPLICATES closure)
  set(${out} ${closure} PARENT_SCOPE)
endfunction()

# The headers that `path` includes with quotes, as written.
function(vrk_quoted_includes path out)
  file(STRINGS ${path} lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
  list(TRANSFORM lines REPLACE "^[^\"]*\"([^\"]*)\".*$" "\\1")
  set(${out} ${lines} PARENT_SCOPE)
endfunction()

# Checks the quoted includes of every folder's sources, headers and tests: a header of the
# library's folders may come only from the folder itself or a folder it depends on (for
# tests, also from the TEST_DEPENDS and from `testing` and `frame`, which bring the library
# up), and a header under internal/ only from its own folder. Fails the configuration with
# the list of offending lines.
function(vrk_check_includes)
  get_property(folders GLOBAL PROPERTY VRK_FOLDERS)
  foreach(folder IN LISTS folders)
    get_target_property(dir vrk_${folder} SOURCE_DIR)
    file(GLOB headers RELATIVE ${dir} ${dir}/*.h ${dir}/internal/*.h)
    foreach(header IN LISTS headers)
      get_filename_component(base ${header} NAME)
      set(owner_${base} ${folder})
      string(FIND "${header}" "internal/" at)
      set(internal_${base} ${at})
    endforeach()
  endforeach()
  file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR}/testing ${PROJECT_SOURCE_DIR}/testing/*.h)
  foreach(header IN LISTS headers)
    set(owner_${header} testing)
    set(internal_${header} -1)
  endforeach()

  set(errors "")
  foreach(folder IN LISTS folders)
    get_target_property(dir vrk_${folder} SOURCE_DIR)
    vrk_folder_closure(${folder} allowed)
    get_target_property(test_depends vrk_${folder} VRK_TEST_DEPENDS)
    set(test_allowed ${allowed} testing frame)
    foreach(depend IN LISTS test_depends)
      vrk_folder_closure(${depend} sub)
      list(APPEND test_allowed ${sub})
    endforeach()
    file(GLOB files RELATIVE ${dir} ${dir}/*.h ${dir}/*.cpp ${dir}/internal/*.h
         ${dir}/internal/*.cpp)
    foreach(file IN LISTS files)
      set(may ${allowed})
      if(file MATCHES "_test\\.cpp$")
        set(may ${test_allowed})
      endif()
      vrk_quoted_includes(${dir}/${file} includes)
      foreach(included IN LISTS includes)
        get_filename_component(base "${included}" NAME)
        set(owner "${owner_${base}}")
        if(owner STREQUAL "" OR owner STREQUAL folder)
          continue()
        endif()
        if(NOT owner IN_LIST may)
          string(APPEND errors "  ${folder}/${file}: ${included} belongs to ${owner}, "
                               "which is not a declared dependency\n")
        elseif(NOT internal_${base} EQUAL -1)
          string(APPEND errors "  ${folder}/${file}: ${included} is internal to ${owner}\n")
        endif()
      endforeach()
    endforeach()
  endforeach()
  # The programs outside the libraries use their public headers only.
  foreach(outside IN ITEMS fuzz bench examples)
    file(GLOB_RECURSE files RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${outside}/*.h
         ${PROJECT_SOURCE_DIR}/${outside}/*.cpp)
    foreach(file IN LISTS files)
      vrk_quoted_includes(${PROJECT_SOURCE_DIR}/${file} includes)
      foreach(included IN LISTS includes)
        get_filename_component(base "${included}" NAME)
        if(DEFINED internal_${base} AND NOT internal_${base} EQUAL -1)
          string(APPEND errors "  ${file}: ${included} is internal to ${owner_${base}}\n")
        endif()
      endforeach()
    endforeach()
  endforeach()
  if(errors)
    message(FATAL_ERROR "Includes that break the folders' declared dependencies:\n${errors}")
  endif()
endfunction()

# Writes VRKLnuBasicUtils.h, which includes every public header of the two base libraries in
# the order the folders were declared (the base layer first), so that it can never miss one.
# The store has an umbrella header of its own.
function(vrk_generate_umbrella_header)
  get_property(folders GLOBAL PROPERTY VRK_FOLDERS)
  set(includes "")
  foreach(folder IN LISTS folders)
    get_target_property(library vrk_${folder} VRK_LIBRARY)
    if(library STREQUAL "VRKLnuStore")
      continue()
    endif()
    get_target_property(headers vrk_${folder} HEADER_SET)
    foreach(header IN LISTS headers)
      get_filename_component(name ${header} NAME)
      string(APPEND includes "#include \"${name}\"\n")
    endforeach()
  endforeach()
  set(umbrella ${PROJECT_BINARY_DIR}/include/VRKLnuBasicUtils/VRKLnuBasicUtils.h)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/VRKLnuBasicUtils.h.in ${umbrella} @ONLY)
  target_sources(VRKLnuBasicUtils PUBLIC FILE_SET umbrella TYPE HEADERS
                 BASE_DIRS ${PROJECT_BINARY_DIR}/include FILES ${umbrella})
endfunction()
