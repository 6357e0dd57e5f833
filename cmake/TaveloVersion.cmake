# The version as programs and packages say it, and what the source's version control knows. After the project command.
include_guard(GLOBAL)

if(TAVELO_PRERELEASE)
  set(TAVELO_VERSION "${PROJECT_VERSION}-${TAVELO_PRERELEASE}")
  # To Debian, "~" comes before the release.
  set(TAVELO_DEBIAN_VERSION "${PROJECT_VERSION}~${TAVELO_PRERELEASE}")
else()
  set(TAVELO_VERSION "${PROJECT_VERSION}")
  set(TAVELO_DEBIAN_VERSION "${PROJECT_VERSION}")
endif()

# tavelo_commit(LINE): "HASH SECONDS REFERENCES" of the source's commit; empty if nothing knows it. "git archive" writes it
# into commit.txt; in a clone, git says it, and the build is configured again when the commit is another one.
function(tavelo_commit line)
  set(${line} "" PARENT_SCOPE)
  file(STRINGS "${PROJECT_SOURCE_DIR}/packaging/commit.txt" said)
  if(NOT said MATCHES "^\\$")
    set(${line} "${said}" PARENT_SCOPE)
    return()
  endif()
  find_program(TAVELO_GIT git)
  # Not the repository of someone else who unpacked this source inside it.
  if(NOT TAVELO_GIT OR NOT EXISTS "${PROJECT_SOURCE_DIR}/.git")
    return()
  endif()
  set(ask "${TAVELO_GIT}" -C "${PROJECT_SOURCE_DIR}")
  execute_process(COMMAND ${ask} log -1 "--format=%H %ct %D" OUTPUT_VARIABLE said ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  execute_process(
    COMMAND ${ask} rev-parse --path-format=absolute --git-path logs/HEAD
    OUTPUT_VARIABLE log ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(EXISTS "${log}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${log}")
  endif()
  set(${line} "${said}" PARENT_SCOPE)
endfunction()

# TAVELO_FULL_VERSION has the commit too unless it bears the release's tag. TAVELO_SOURCE_DATE is the time of the source in
# seconds: the commit's, or the day of the newest changelog entry.
tavelo_commit(commit)
set(TAVELO_FULL_VERSION "${TAVELO_VERSION}")
if(commit MATCHES "^([0-9a-f]+) ([0-9]+) ?(.*)$")
  set(TAVELO_SOURCE_DATE "${CMAKE_MATCH_2}")
  string(SUBSTRING "${CMAKE_MATCH_1}" 0 8 hash)
  string(REPLACE ", " ";" references "${CMAKE_MATCH_3}")
  if(NOT "tag: v${TAVELO_VERSION}" IN_LIST references)
    string(APPEND TAVELO_FULL_VERSION " (${hash})")
  endif()
else()
  file(STRINGS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" entries REGEX "^## .*[0-9]+-[0-9]+-[0-9]+")
  execute_process(
    COMMAND sh -c "date -u -d \"$(printf %s \"$1\" | grep -oE '[0-9]{4}-[0-9]{2}-[0-9]{2}' | head -n 1)\" +%s" sh "${entries}"
    OUTPUT_VARIABLE TAVELO_SOURCE_DATE OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT TAVELO_SOURCE_DATE)
  set(TAVELO_SOURCE_DATE 0)
endif()
