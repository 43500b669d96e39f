# Native (Linux) build of the core layer: tests, benchmarks and fuzzers.
set(KIV_SAN_FLAGS "")
if(KIV_SANITIZE)
  set(KIV_SAN_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
endif()
if(KIV_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzzers need clang (use the 'fuzz' preset)")
  endif()
  set(KIV_SAN_FLAGS -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                    -fno-omit-frame-pointer)
endif()

add_library(kiv_core STATIC ${KIV_CORE_SOURCES})
kiv_core_settings(kiv_core)
target_compile_options(kiv_core PUBLIC ${KIV_SAN_FLAGS})
target_link_options(kiv_core PUBLIC ${KIV_SAN_FLAGS})
# Line coverage of the core only: the test command reads it with gcovr after the native tests.
option(KIV_COVERAGE "Instrument the core for line coverage (gcov)" OFF)
if(KIV_COVERAGE)
  target_compile_options(kiv_core PUBLIC --coverage)
  target_link_options(kiv_core PUBLIC --coverage)
endif()

if(KIV_FUZZ)
  file(GLOB KIV_FUZZERS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/fuzz/*_fuzzer.cpp)
  function(kiv_fuzzer name src)
    add_executable(${name} ${src})
    target_link_libraries(${name} PRIVATE kiv_core)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    kiv_warnings(${name})
  endfunction()
  foreach(src ${KIV_FUZZERS})
    get_filename_component(name ${src} NAME_WE)
    kiv_fuzzer(${name} ${src})
  endforeach()
  # The transfers once more with the log on, their lines and dumps formatted from the fuzzed
  # values: a target of its own, since formatting costs ten times the transfer itself.
  kiv_fuzzer(transfer_log_fuzzer ${CMAKE_SOURCE_DIR}/fuzz/transfer_fuzzer.cpp)
  target_compile_definitions(transfer_log_fuzzer PRIVATE KIV_FUZZ_WITH_LOG=1)
  return()
endif()

include(cmake/header_check.cmake)

# kivsettings from the same main as on Windows: decode and --help run here; show, export and
# import are the spooler's, in tools/kivsettings/kivsettings_win.cpp.
add_executable(kivsettings ${CMAKE_SOURCE_DIR}/tools/kivsettings/kivsettings_main.cpp
                           ${CMAKE_SOURCE_DIR}/tools/kivsettings/kivsettings.cpp)
target_link_libraries(kivsettings PRIVATE kiv_core)
kiv_warnings(kivsettings)

find_package(GTest REQUIRED)
file(GLOB KIV_NATIVE_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/*_test.cpp)
add_executable(kiv_native_tests ${KIV_NATIVE_TESTS})
# libcrypto is the reference the SHA-1 tests and benchmark compare with; the DLL never uses it.
find_package(OpenSSL REQUIRED)
target_link_libraries(kiv_native_tests PRIVATE kiv_core GTest::gtest GTest::gtest_main OpenSSL::Crypto)
target_include_directories(kiv_native_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests/support)
target_compile_definitions(kiv_native_tests PRIVATE KIV_TEST_DATA_DIR="${CMAKE_SOURCE_DIR}/tests/data")
kiv_warnings(kiv_native_tests)

find_package(benchmark REQUIRED)
file(GLOB KIV_BENCHES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/bench/*_bench.cpp)
foreach(src ${KIV_BENCHES})
  get_filename_component(name ${src} NAME_WE)
  add_executable(${name} ${src})
  target_link_libraries(${name} PRIVATE kiv_core benchmark::benchmark OpenSSL::Crypto)
  kiv_warnings(${name})
endforeach()
