# Writes OUTPUT, a source file that holds the page of FOLDER: template.html with style.css and the
# scripts in it. SCRIPTS names the modules; each comes after those that it imports from.
#
# Modules are joined into one script. Imports and exports begin a line, as
# `import { a, b } from "./c.js";` and `export function a(b)`, and no two modules use one name at their
# outermost level.
cmake_policy(SET CMP0054 NEW)

set(pieces "")

# Compilers limit the length of a literal.
function(add_text text)
  string(LENGTH "${text}" length)
  set(added "")
  set(begin 0)
  while(begin LESS length)
    string(SUBSTRING "${text}" ${begin} 12000 part)
    string(APPEND added "        {R\"page(${part})page\", PageSlot::none},\n")
    math(EXPR begin "${begin} + 12000")
  endwhile()
  set(pieces "${pieces}${added}" PARENT_SCOPE)
endfunction()

# hash_of(TEXT RESULT): the text's SHA-256 in Base64, as content policies want it.
function(hash_of text result)
  set(letters "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 digits "${text}")
  set(base64 "")
  foreach(begin RANGE 0 60 6)
    string(SUBSTRING "${digits}00" ${begin} 6 triple)
    foreach(shift 18 12 6 0)
      math(EXPR place "(0x${triple} >> ${shift}) & 63")
      string(SUBSTRING "${letters}" ${place} 1 letter)
      string(APPEND base64 "${letter}")
    endforeach()
  endforeach()
  # 32 bytes end one letter before the last four are full.
  string(SUBSTRING "${base64}" 0 43 base64)
  set(${result} "sha256-${base64}=" PARENT_SCOPE)
endfunction()

file(READ "${FOLDER}/style.css" style)
set(script "\"use strict\";\n")
foreach(module IN LISTS SCRIPTS)
  file(READ "${FOLDER}/${module}" text)
  string(REGEX REPLACE "(^|\n)import [^;]*;" "\\1" text "${text}")
  string(REGEX REPLACE "(^|\n)export " "\\1" text "${text}")
  string(APPEND script "\n// ${module}\n${text}")
endforeach()
hash_of("${style}" style_hash)
hash_of("${script}" script_hash)

file(READ "${FOLDER}/template.html" rest)
string(REPLACE "{{style-hash}}" "${style_hash}" rest "${rest}")
string(REPLACE "{{script-hash}}" "${script_hash}" rest "${rest}")
while(rest MATCHES "{{([a-z]+)}}")
  set(slot "${CMAKE_MATCH_1}")
  string(FIND "${rest}" "{{${slot}}}" begin)
  string(SUBSTRING "${rest}" 0 ${begin} before)
  add_text("${before}")
  if(slot STREQUAL "style")
    add_text("${style}")
  elseif(slot STREQUAL "script")
    add_text("${script}")
  else()
    string(APPEND pieces "        {\"\", PageSlot::${slot}},\n")
  endif()
  string(LENGTH "{{${slot}}}" length)
  math(EXPR begin "${begin} + ${length}")
  string(SUBSTRING "${rest}" ${begin} -1 rest)
endwhile()
add_text("${rest}")

file(WRITE "${OUTPUT}" "#include \"reports/page/embedded_page.h\"

namespace depcompare {

std::span<const PagePiece> embeddedPage() noexcept {
    static constexpr PagePiece all[] = {
${pieces}    };
    return all;
}

}  // namespace depcompare
")
