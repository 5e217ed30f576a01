# cmake -D INPUT=FILE -D OUTPUT=FILE -D HEADER=FILE -D NAMESPACE=NAME -D NAME=NAME -P embed_text.cmake
#
# Writes a source file that defines a std::string_view with the input's bytes. An array of numbers,
# because compilers limit the length of literals.
file(READ ${INPUT} bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
file(
  WRITE ${OUTPUT}
  "#include \"${HEADER}\"

namespace ${NAMESPACE} {
namespace {
constexpr char kBytes[] = {
${bytes}
};
}  // namespace

const std::string_view ${NAME}(kBytes, ${size});

}  // namespace ${NAMESPACE}
")
