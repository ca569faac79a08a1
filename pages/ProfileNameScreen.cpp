#include "ProfileNameScreen.h"

#include "NewProfileFile.h"

#include "store/Profiles.h"

#include <QString>

#include <algorithm>

#include <unistd.h>

namespace {

// The command line refuses longer names; a profile saved here must stay reachable from there.
constexpr std::size_t kCommandLineNameLimit = 200;
constexpr long kUsualNameMax = 255;

std::size_t longestName(const std::string& folder)
{
    long nameMax = ::pathconf(folder.c_str(), _PC_NAME_MAX);
    if (nameMax <= 0)
        nameMax = kUsualNameMax;
    long room = nameMax - static_cast<long>(kProfileExtension.size() + kNewProfileStagingSuffixLength);
    return std::min(kCommandLineNameLimit, static_cast<std::size_t>(std::max(0L, room)));
}

// C0 and C1 controls alike: tabs, line breaks and escapes that no one means to name a file with.
bool holdsControlCharacter(std::string_view name)
{
    for (unsigned char byte : name)
        if (byte < 0x20 || byte == 0x7F)
            return true;
    const QString text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    for (QChar character : text)
        if (character.category() == QChar::Other_Control)
            return true;
    return false;
}

} // namespace

ProfileNameFault profileNameFault(std::string_view name, const std::string& folder)
{
    if (name.empty())
        return ProfileNameFault::Empty;
    if (name.find('/') != std::string_view::npos)
        return ProfileNameFault::Slash;
    if (name.front() == '.')
        return ProfileNameFault::LeadingDot;
    if (holdsControlCharacter(name))
        return ProfileNameFault::ControlCharacter;
    if (name.size() > longestName(folder))
        return ProfileNameFault::TooLong;
    return ProfileNameFault::None;
}

const char* profileNameFaultMessageKey(ProfileNameFault fault)
{
    switch (fault) {
    case ProfileNameFault::Empty:
        return "PROFILE_EMPTY_POPUP";
    case ProfileNameFault::Slash:
        return "PROFILE_SLASH_POPUP";
    case ProfileNameFault::LeadingDot:
        return "PROFILE_DOT_POPUP";
    case ProfileNameFault::ControlCharacter:
        return "PROFILE_CONTROL_POPUP";
    case ProfileNameFault::TooLong:
        return "PROFILE_LONG_POPUP";
    case ProfileNameFault::None:
        break;
    }
    return "PROFILE_NAME_POPUP";
}
