#include "NSBundle.h"

#include "platform/core/InstalledData.h"

#include "StringsFile.h"

#include "platform/core/UIScreen.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

std::vector<std::string>& preferredLanguagesOverride()
{
    static std::vector<std::string> languages;
    return languages;
}

// "de-DE" -> "de-DE", "de_DE", "de"
std::vector<std::string> languageCandidates()
{
    std::vector<std::string> result;
    auto add = [&](std::string language) {
        if (!language.empty() && std::find(result.begin(), result.end(), language) == result.end())
            result.push_back(std::move(language));
    };
    std::vector<std::string> asked = preferredLanguagesOverride();
    if (asked.empty())
        for (const QString& language : QLocale::system().uiLanguages())
            asked.push_back(language.toStdString());
    for (const std::string& language : asked) {
        add(language);
        std::string underscored = language;
        std::replace(underscored.begin(), underscored.end(), '-', '_');
        add(underscored);
        add(language.substr(0, language.find_first_of("-_")));
    }
    return result;
}

QByteArray readResource(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    constexpr qint64 kLargestResource = 32 * 1024 * 1024;
    if (!file.open(QIODevice::ReadOnly) || file.size() > kLargestResource)
        return QByteArray();
    return file.readAll();
}

} // namespace

NSBundle::NSBundle(std::string folder) : folder_(std::move(folder)) {}

NSBundle& NSBundle::mainBundle()
{
    // An installation's bundle folder, where a translation can be added without a rebuild;
    // else the copy built into the program.
    static NSBundle bundle([] {
        std::optional<std::string> data = installedDataFolder();
        if (data && QFileInfo(QString::fromStdString(*data + "/bundle")).isDir())
            return *data + "/bundle";
        return std::string(":/bundle");
    }());
    return bundle;
}

NSBundle& NSBundle::bundleForClass(const ObjCClass&)
{
    return mainBundle();
}

void NSBundle::setFolder(std::string folder)
{
    folder_ = std::move(folder);
    tables_.clear();
}

UIImage NSBundle::imageNamed(std::string_view name) const
{
    if (name.empty() || name.find("..") != std::string_view::npos)
        return UIImage();
    std::string base(name);
    std::string extension = ".png";
    if (std::size_t dot = base.rfind('.'); dot != std::string::npos && dot > 0) {
        extension = base.substr(dot);
        base.resize(dot);
    }
    // Best first: the screen's own scale, then larger ones (scaled down), then smaller.
    int wanted = std::clamp(static_cast<int>(std::ceil(UIScreen::mainScreen().scale())), 1, 3);
    std::vector<int> order{wanted};
    for (int scale = wanted + 1; scale <= 3; ++scale)
        order.push_back(scale);
    for (int scale = wanted - 1; scale >= 1; --scale)
        order.push_back(scale);
    for (int scale : order) {
        std::string suffix = scale == 1 ? "" : "@" + std::to_string(scale) + "x";
        QByteArray data = readResource(folder_ + "/" + base + suffix + extension);
        if (data.isEmpty())
            continue;
        UIImage image = UIImage::imageWithDataScale(reinterpret_cast<const std::uint8_t*>(data.constData()),
                                                    static_cast<std::size_t>(data.size()), scale);
        if (image)
            return image;
    }
    return UIImage();
}

const NSBundle::Table* NSBundle::table(const std::string& language, const std::string& name) const
{
    std::string path = folder_ + "/" + language + ".lproj/" + name + ".strings";
    auto found = tables_.find(path);
    if (found == tables_.end()) {
        QByteArray data = readResource(path);
        std::optional<Table> parsed = data.isEmpty() ? std::nullopt : parseStringsFile(data);
        found = tables_.emplace(path, std::move(parsed)).first;
    }
    return found->second ? &*found->second : nullptr;
}

std::string NSBundle::chosenLanguage(const std::string& tableName) const
{
    std::string name = tableName.empty() ? "Localizable" : tableName;
    for (const std::string& language : languageCandidates())
        if (table(language, name))
            return language;
    return "en";
}

std::string NSBundle::localizedStringForKey(const std::string& key, const std::string& value,
                                            const std::string& tableName) const
{
    std::string name = tableName.empty() ? "Localizable" : tableName;
    for (const std::string& language : {chosenLanguage(name), std::string("en")})
        if (const Table* strings = table(language, name)) {
            auto found = strings->find(key);
            if (found != strings->end())
                return found->second;
        }
    return value.empty() ? key : value;
}

void NSBundle::setPreferredLanguages(std::vector<std::string> languages)
{
    preferredLanguagesOverride() = std::move(languages);
}
