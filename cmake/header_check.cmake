# Every core header compiles on its own (one generated translation unit each), so a core header
# that needs Win32 or forgets an include fails the build. The shared test fakes are held to the
# same rule, since tests and fuzzers include them alone.
file(GLOB_RECURSE KIV_CHECKED_HEADERS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*.h
     ${CMAKE_SOURCE_DIR}/tests/support/*.h)
list(FILTER KIV_CHECKED_HEADERS EXCLUDE REGEX "_win\\.h$|/src/win/")
set(KIV_HEADER_UNITS "")
foreach(header ${KIV_CHECKED_HEADERS})
  file(RELATIVE_PATH relative ${CMAKE_SOURCE_DIR} ${header})
  string(MAKE_C_IDENTIFIER ${relative} unit)
  set(unit_file ${CMAKE_BINARY_DIR}/header_check/${unit}.cpp)
  file(CONFIGURE OUTPUT ${unit_file} CONTENT "#include \"${header}\"\n")
  list(APPEND KIV_HEADER_UNITS ${unit_file})
endforeach()
add_library(kiv_header_check OBJECT ${KIV_HEADER_UNITS})
kiv_core_settings(kiv_header_check)
target_include_directories(kiv_header_check PRIVATE ${CMAKE_SOURCE_DIR}/tests/support)
