# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
include(GenerateExportHeader)

# zyl_add_library(<Name> SOURCES ... [LIBS ...])
# A shared host library with its export macro <NAME>_EXPORT in <Name>Export.h,
# hidden visibility, and an alias ZYL::<Name>.
function(zyl_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;PRIVATE_LIBS" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(ZYL::${name} ALIAS ${name})
    string(TOUPPER ${name} upper)
    generate_export_header(${name} BASE_NAME ${upper} EXPORT_FILE_NAME ${name}Export.h)
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    target_include_directories(${name} PUBLIC
        ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LIBS} PRIVATE ${ARG_PRIVATE_LIBS})
    # Installed side by side in lib/, where each finds the others and the session finds the
    # module and the bridge it loads at run time.
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} LIBRARY DESTINATION lib)
endfunction()

# zyl_add_test(<name> SOURCES ... LIBS ... [GL])
# A Qt Test executable registered with CTest. Every test runs headless with its own
# settings folder; GL tests run under xvfb-run so that they get a real (software) context,
# with the label "gl".
function(zyl_add_test name)
    cmake_parse_arguments(ARG "GL" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE Qt6::Test ${ARG_LIBS})
    set(settings ${CMAKE_CURRENT_BINARY_DIR}/settings/${name})
    if(ARG_GL)
        find_program(ZYL_XVFB_RUN xvfb-run REQUIRED)
        add_test(NAME ${name} COMMAND ${ZYL_XVFB_RUN} -a $<TARGET_FILE:${name}>)
        set_tests_properties(${name} PROPERTIES LABELS gl)
        set(platform xcb)
    else()
        add_test(NAME ${name} COMMAND ${name})
        set(platform offscreen)
    endif()
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=${platform};ZYL_SETTINGS_DIR=${settings};LC_ALL=C.UTF-8"
        TIMEOUT 300)
endfunction()

# zyl_add_bench(<name> SOURCES ... LIBS ...): a timing program, built but never run by CTest.
function(zyl_add_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/bench)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
endfunction()

# zyl_add_present_subdirectories([folder ...])
# Adds each listed folder, in the order given, once it has a CMakeLists.txt; with no folder
# listed, every such subfolder in alphabetical order.
function(zyl_add_present_subdirectories)
    set(folders ${ARGN})
    if(NOT folders)
        file(GLOB folders LIST_DIRECTORIES true RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/*)
    endif()
    foreach(folder IN LISTS folders)
        if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt)
            add_subdirectory(${folder})
        endif()
    endforeach()
endfunction()
