# Writes SOURCE, which defines frmAbout::OwnPicture, from the bytes of the file PICTURE.
file(READ ${PICTURE} digits HEX)
string(REGEX REPLACE "(..)" "0x\\1, " bytes "${digits}")
string(REGEX REPLACE "(.........................................................................[^ ]*) " "\\1\n    " bytes "${bytes}")
file(WRITE ${SOURCE} "#include \"ui/frmAbout.h\"

#include <array>

namespace {

constexpr auto Bytes = std::to_array<unsigned char>({
    ${bytes}
});

} // namespace

const std::string& frmAbout::OwnPicture() {
    static const std::string picture(Bytes.begin(), Bytes.end());
    return picture;
}
")
