# Turns a list of files into a C++ source holding their names and bytes.
#   cmake -DOUTPUT=out.cpp -DFUNCTION=name -DFILES="a;b" -P EmbedFiles.cmake
# The generated function returns std::vector<EmbeddedFile> (see store/EmbeddedFile.h).
set(body "")
set(entries "")
set(index 0)
foreach(file IN LISTS FILES)
  get_filename_component(name "${file}" NAME)
  file(READ "${file}" hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
  string(APPEND body "static const char file${index}[] = {${bytes} 0};\n")
  string(APPEND entries "        {\"${name}\", std::string_view(file${index}, sizeof file${index} - 1)},\n")
  math(EXPR index "${index} + 1")
endforeach()
file(WRITE "${OUTPUT}.new" "// Generated from the files it holds; do not edit.\n#include \"store/EmbeddedFile.h\"\n\n${body}\nconst std::vector<EmbeddedFile>& ${FUNCTION}()\n{\n    static const std::vector<EmbeddedFile> files = {\n${entries}    };\n    return files;\n}\n")
file(COPY_FILE "${OUTPUT}.new" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.new")
