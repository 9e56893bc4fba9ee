# Writes OUTPUT, a source file that holds the text of each of FILES under its name without ".json".
set(entries "")
foreach(file IN LISTS FILES)
  get_filename_component(locale "${file}" NAME_WE)
  file(READ "${file}" text)
  string(APPEND entries "        {\"${locale}\", R\"messages(${text})messages\"},\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"embedded_messages.h\"

namespace depcompare::messages {

std::span<const EmbeddedMessages> embeddedMessages() noexcept {
    static constexpr EmbeddedMessages all[] = {
${entries}    };
    return all;
}

}  // namespace depcompare::messages
")
