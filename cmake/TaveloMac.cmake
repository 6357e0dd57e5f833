# What a build for macOS needs besides; included before the project is declared.
include_guard(GLOBAL)

set(TAVELO_ICU_ROOT "" CACHE PATH "The ICU to link, with static libraries; Homebrew's if empty")

# Finds Homebrew's ICU, whose folder may bear its version.
function(tavelo_find_homebrew_icu result)
  set(found "")
  find_program(TAVELO_BREW brew PATHS /opt/homebrew/bin /usr/local/bin)
  if(TAVELO_BREW)
    execute_process(
      COMMAND "${TAVELO_BREW}" --prefix icu4c
      OUTPUT_VARIABLE found
      OUTPUT_STRIP_TRAILING_WHITESPACE
      ERROR_QUIET)
  endif()
  if(NOT EXISTS "${found}/lib")
    file(GLOB found /opt/homebrew/opt/icu4c* /usr/local/opt/icu4c*)
    list(SORT found COMPARE NATURAL ORDER DESCENDING)
    list(POP_FRONT found found)
  endif()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# The architectures of the static ICU in a folder, as lipo names them; empty if they are unknown.
function(tavelo_icu_architectures folder result)
  set(architectures "")
  find_program(TAVELO_LIPO lipo)
  if(TAVELO_LIPO)
    execute_process(
      COMMAND "${TAVELO_LIPO}" -archs "${folder}/lib/libicudata.a"
      OUTPUT_VARIABLE architectures
      OUTPUT_STRIP_TRAILING_WHITESPACE
      ERROR_QUIET)
  endif()
  separate_arguments(architectures)
  set(${result} "${architectures}" PARENT_SCOPE)
endfunction()

if(TAVELO_ICU_ROOT)
  set(ICU_ROOT "${TAVELO_ICU_ROOT}")
  # One program for both kinds of Mac if the ICU that was named has both; Homebrew's has the machine's own.
  tavelo_icu_architectures("${ICU_ROOT}" architectures)
  if("arm64" IN_LIST architectures AND "x86_64" IN_LIST architectures)
    set(CMAKE_OSX_ARCHITECTURES "arm64;x86_64" CACHE STRING "The architectures of the program")
  endif()
else()
  tavelo_find_homebrew_icu(ICU_ROOT)
endif()

# tavelo_prepare_mac(): languages and libraries, once the project is declared. ICU is linked statically, so that the
# program needs nothing but macOS.
macro(tavelo_prepare_mac)
  if(NOT CMAKE_SYSTEM_NAME STREQUAL "Darwin")
    message(FATAL_ERROR "TAVELO_MACOS builds on a Mac only; on Linux, scripts/test checks what a Mac compiles.")
  endif()
  enable_language(OBJCXX)
  set(CMAKE_OBJCXX_STANDARD 20)
  set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
  set(CMAKE_OBJCXX_EXTENSIONS OFF)
  set(suffixes "${CMAKE_FIND_LIBRARY_SUFFIXES}")
  set(CMAKE_FIND_LIBRARY_SUFFIXES .a)
  find_package(ICU 67 REQUIRED COMPONENTS uc i18n data)
  set(CMAKE_FIND_LIBRARY_SUFFIXES "${suffixes}")
  # The static libraries name nothing that they need themselves.
  set_property(TARGET ICU::i18n APPEND PROPERTY INTERFACE_LINK_LIBRARIES ICU::uc)
  set_property(TARGET ICU::uc APPEND PROPERTY INTERFACE_LINK_LIBRARIES ICU::data)
endmacro()

# tavelo_mac_bundle(TARGET): makes Tavelo.app of the program, with its icon, its portrait and its property list.
function(tavelo_mac_bundle target)
  set(resources "${PROJECT_SOURCE_DIR}/packaging/resources/AppIcon.icns"
                "${PROJECT_SOURCE_DIR}/packaging/resources/Founder.png")
  target_sources(${target} PRIVATE ${resources})
  set_source_files_properties(${resources} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
  configure_file("${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in" "${PROJECT_BINARY_DIR}/Info.plist" @ONLY)
  set_target_properties(
    ${target}
    PROPERTIES MACOSX_BUNDLE ON
               OUTPUT_NAME Tavelo
               MACOSX_BUNDLE_INFO_PLIST "${PROJECT_BINARY_DIR}/Info.plist")
  install(TARGETS ${target} BUNDLE DESTINATION .)
endfunction()
