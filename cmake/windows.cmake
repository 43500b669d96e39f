# Windows x64 build with mingw-w64: KivUI.dll, the Windows test suite and the tools.
enable_language(RC)
# The DLL must load with nothing but system DLLs beside it.
set(KIV_STATIC_RUNTIME -static -static-libgcc -static-libstdc++)
add_compile_definitions(UNICODE _UNICODE __USE_MINGW_ANSI_STDIO=1)

add_library(kiv_core_obj OBJECT ${KIV_CORE_SOURCES})
kiv_core_settings(kiv_core_obj)
add_library(kiv_win_obj OBJECT ${KIV_WIN_SOURCES})
kiv_core_settings(kiv_win_obj)

set(KIV_WIN_LIBS ole32 oleaut32 uuid advapi32 user32 gdi32 gdiplus comctl32 comdlg32 shell32
                 shlwapi winspool version)

file(GLOB KIV_RC_FILES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*.rc)
# windres reports no dependencies, so the pictures and ids it embeds are listed by hand.
file(GLOB KIV_RC_INPUTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/png/*.png)
set_source_files_properties(${KIV_RC_FILES} PROPERTIES OBJECT_DEPENDS
                            "${CMAKE_SOURCE_DIR}/resources/resource.h;${KIV_RC_INPUTS}")
add_library(KivUI SHARED $<TARGET_OBJECTS:kiv_core_obj> $<TARGET_OBJECTS:kiv_win_obj>
                         ${KIV_RC_FILES} ${CMAKE_SOURCE_DIR}/resources/KivUI.def)
set_target_properties(KivUI PROPERTIES PREFIX "" OUTPUT_NAME "KivUI")
target_link_options(KivUI PRIVATE ${KIV_STATIC_RUNTIME})
target_link_libraries(KivUI PRIVATE ${KIV_WIN_LIBS})

# GoogleTest from Debian's source package, cross-built with the same compiler.
set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# Every .cpp in tests/win: the *_test.cpp suites and their support files.
file(GLOB KIV_WIN_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/win/*.cpp)
add_executable(kiv_win_tests ${KIV_WIN_TESTS} $<TARGET_OBJECTS:kiv_core_obj>
                             $<TARGET_OBJECTS:kiv_win_obj>)
target_include_directories(kiv_win_tests PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/resources
                           ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/tests/support
                           # The host's counts of what a process holds (heap, handles, GDI).
                           ${CMAKE_SOURCE_DIR}/tools/host)
target_link_libraries(kiv_win_tests PRIVATE gtest gtest_main ${KIV_WIN_LIBS})
target_link_options(kiv_win_tests PRIVATE ${KIV_STATIC_RUNTIME})
add_dependencies(kiv_win_tests KivUI)
kiv_warnings(kiv_win_tests)

# Windows programs under tools/: one folder each, with every .cpp and .rc in it.
file(GLOB KIV_TOOL_DIRS LIST_DIRECTORIES true CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/*)
foreach(dir ${KIV_TOOL_DIRS})
  if(IS_DIRECTORY ${dir} AND EXISTS ${dir}/CMakeLists.txt)
    add_subdirectory(${dir})
  endif()
endforeach()

# The Wine printer installer is shared by the host and the Windows tests.
if(TARGET kiv_wine_printer)
  target_link_libraries(kiv_win_tests PRIVATE kiv_wine_printer)
endif()
