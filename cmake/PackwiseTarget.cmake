# What every target of this project is compiled with.
function(packwise_target name)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_compile_options(${name} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Woverloaded-virtual -Werror
    # GCC 12 takes "literal" + std::string(...) for overlapping copies when it optimises.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  target_compile_definitions(${name} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_FOREACH QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER)
  if(WIN32)
    target_compile_definitions(${name} PRIVATE NOMINMAX WIN32_LEAN_AND_MEAN)
  endif()
  if(PACKWISE_FUZZ)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(PACKWISE_SANITIZE)
    target_compile_options(${name} PRIVATE
      -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${name} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()

# packwise_library(folder file... [LINKS target...])
# The library of a folder of src/, packwise_<folder>. What includes one of its headers needs what it
# links itself, so all of that is public.
function(packwise_library folder)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  add_library(packwise_${folder} STATIC ${ARG_UNPARSED_ARGUMENTS})
  packwise_target(packwise_${folder})
  target_link_libraries(packwise_${folder} PUBLIC ${ARG_LINKS})
  if(NOT folder MATCHES "^(protocol|engine|server)$")
    set_target_properties(packwise_${folder} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# packwise_offscreen(name) lets a program run on Qt's platform "offscreen", too: a static Qt has but
# the system's own platform otherwise.
function(packwise_offscreen name)
  get_target_property(qt_kind Qt6::Core TYPE)
  if(qt_kind STREQUAL "STATIC_LIBRARY")
    qt_import_plugins(${name} INCLUDE Qt6::QOffscreenIntegrationPlugin)
  endif()
endfunction()

# packwise_program(name SUMMARY text SOURCES file... LINKS target... [WINDOWS])
# A program that users get; PACKWISE_PROGRAMS, a global property, lists all of them. Windows shows
# the summary as what the file is. WINDOWS says that it opens windows, and no terminal there.
function(packwise_program name)
  cmake_parse_arguments(ARG "WINDOWS" "SUMMARY" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  packwise_target(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ${ARG_WINDOWS})
  set_property(GLOBAL APPEND PROPERTY PACKWISE_PROGRAMS ${name})
  if(WIN32)
    # What the file is, its icon, and what it asks of the system.
    set(PACKWISE_RC_NAME ${name})
    set(PACKWISE_RC_SUMMARY "${ARG_SUMMARY}")
    string(REPLACE "." "," PACKWISE_RC_VERSION "${PROJECT_VERSION}.0.0.0")
    string(REGEX MATCH "^[0-9]+,[0-9]+,[0-9]+,[0-9]+" PACKWISE_RC_VERSION "${PACKWISE_RC_VERSION}")
    configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/program.rc.in ${name}.rc @ONLY)
    target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
  endif()
endfunction()

# packwise_test(name SOURCES file... LIBS target... [WINDOWS])
# One test program, run as one test. WINDOWS gives it the main that makes a QApplication on the
# offscreen platform; without it GoogleTest's own main is used and no Qt is needed.
function(packwise_test name)
  cmake_parse_arguments(ARG "WINDOWS" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  packwise_target(${name})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  # What a test itself does takes no time; compiling it does.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(ARG_WINDOWS)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} packwise_test_support GTest::gmock GTest::gtest)
    packwise_offscreen(${name})
  else()
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
  endif()
  add_test(NAME ${name} COMMAND ${name})
endfunction()
