#include "ThemeScripts.h"

#include "platform/core/Root.h"

#include <fstream>
#include <iterator>
#include <sys/stat.h>

const std::string_view kBuiltInPreviewScript =
    R"JS((c,g,l,m,e){var d=Math.round(3*c/4)/2;c=Math.floor(c/20);var h=2*d+c,f=document.createElement("canvas"),a=f.getContext("2d");e=e.join();var b=h/2,n=4*d/3,k=Math.PI;100==g&&(n=d);f.width=h;f.height=h;a.lineWidth=c;a.strokeStyle="rgba("+e+",0.3)";m&&(a.strokeStyle="rgba(255,59,48,0.3)");l&&(a.strokeStyle="rgba(76,217,100,0.3)");a.arc(b,b,d,0,2*k);a.stroke();a.strokeStyle="rgb("+e+")";m&&(a.strokeStyle="#FF3B30");l&&(a.strokeStyle="#4CD964");a.fillStyle=a.strokeStyle;a.beginPath();a.arc(b,b,d,k*((100-g)/50-.5),1.5*k);a.stroke();a.font=n+"px Helvetica Neue";a.textAlign="center";a.textBaseline="middle";a.fillText(g,b,b);return f.toDataURL("image/png")})JS";

namespace {

bool fileExists(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

bool isValidUTF8(const std::string& text)
{
    std::size_t i = 0;
    while (i < text.size()) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        std::size_t length = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
        if (length == 0 || i + length > text.size())
            return false;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80)
                return false;
        i += length;
    }
    return true;
}

// Theme files are small; anything larger than this is not read.
constexpr std::streamsize kMaxThemeScriptSize = 4 * 1024 * 1024;

std::optional<std::string> readUTF8File(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::string text;
    char buffer[65536];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        text.append(buffer, static_cast<std::size_t>(in.gcount()));
        if (static_cast<std::streamsize>(text.size()) > kMaxThemeScriptSize)
            return std::nullopt;
    }
    if (in.bad() || !isValidUTF8(text))
        return std::nullopt;
    return text;
}

} // namespace

std::optional<std::string> getThemeScriptWithName(std::string_view name)
{
    for (std::string_view folder : kThemeFolders) {
        std::string path = Root::path(folder) + "/" + std::string(name) + ".js";
        if (fileExists(path))
            return readUTF8File(path);
    }
    return std::nullopt;
}
