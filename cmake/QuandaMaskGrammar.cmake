# Writes QUANDA_MASK_GRAMMAR, the short date-mask syntax as a person types it, into a header for
# the quanda program's help, taken from the grammar in Quanda/DateMasks/QuandaDateMaskSyntax.h so
# that it is written once: the rules of the table between its clang-format markers (without the
# type names) and the paragraph after it, up to how deep rules nest. Rewritten only when it changes.
function(quanda_write_mask_grammar header output)
  file(READ ${header} source)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  string(REGEX MATCH "// clang-format off\n(.*)// clang-format on\n//\n(.*)\n#pragma" found
         "${source}")
  set(table "${CMAKE_MATCH_1}")
  string(REGEX REPLACE "\n//\n.*" "" paragraph "${CMAKE_MATCH_2}")
  set(text "")
  string(REPLACE "\n" ";" table_lines "${table}")
  foreach(line IN LISTS table_lines)
    string(REGEX REPLACE "^// " "" line "${line}")
    string(REGEX REPLACE "   +Quanda.*$" "" rule "${line}")
    string(STRIP "${rule}" stripped)
    # A line indented to the type column only continues a note on the type.
    if(NOT stripped STREQUAL "" AND NOT rule MATCHES "^          ")
      string(APPEND text "${rule}\n")
    endif()
  endforeach()
  string(REGEX REPLACE "(^|\n)// ?" "\\1" paragraph "${paragraph}")
  # How deep rules nest is the library's business, not the typist's.
  string(REGEX REPLACE "[ \n]Combinations nest.*" "" paragraph "${paragraph}")
  string(APPEND text "${paragraph}\n")
  string(REPLACE "\\" "\\\\" text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  string(REPLACE "\n" "\\n\" \\\n    \"" text "${text}")
  file(CONFIGURE OUTPUT ${output} CONTENT
       "// Generated from Quanda/DateMasks/QuandaDateMaskSyntax.h by cmake/QuandaMaskGrammar.cmake.\n#pragma once\n\n#define QUANDA_MASK_GRAMMAR \\\n    \"${text}\"\n"
       @ONLY)
endfunction()
