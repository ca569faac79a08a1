#include "UIApplication.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

#include <cctype>

UIApplication& UIApplication::sharedApplication()
{
    static UIApplication application;
    return application;
}

std::optional<std::string> urlScheme(const std::string& url)
{
    std::size_t colon = url.find(':');
    if (colon == std::string::npos || colon == 0 || !std::isalpha(static_cast<unsigned char>(url[0])))
        return std::nullopt;
    for (std::size_t i = 0; i < colon; ++i) {
        unsigned char c = static_cast<unsigned char>(url[i]);
        if (!std::isalnum(c) && c != '+' && c != '-' && c != '.')
            return std::nullopt;
    }
    std::string scheme = url.substr(0, colon);
    for (char& c : scheme)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return scheme;
}

bool UIApplication::openURL(const std::string& url)
{
    QUrl parsed(QString::fromStdString(url), QUrl::StrictMode);
    if (!urlScheme(url) || !parsed.isValid())
        return false;
    if (opener_)
        return opener_(url);
    return QDesktopServices::openUrl(parsed);
}

bool UIApplication::canOpenURL(const std::string& url) const
{
    std::optional<std::string> scheme = urlScheme(url);
    if (!scheme)
        return false;
    if (schemeQuery_)
        return schemeQuery_(*scheme);
    return desktopHasHandlerForScheme(*scheme);
}

namespace {

bool mimeappsListsName(const QString& mimeType)
{
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    for (const QString& data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders << data + QStringLiteral("/applications");
    QRegularExpression entry(QStringLiteral("^%1=(.+)$").arg(QRegularExpression::escape(mimeType)),
                             QRegularExpression::MultilineOption);
    for (const QString& folder : folders)
        for (const QString& name : {QStringLiteral("mimeapps.list"), QStringLiteral("defaults.list"),
                                    QStringLiteral("mimeinfo.cache")}) {
            QFile file(QDir(folder).filePath(name));
            if (file.open(QIODevice::ReadOnly) && entry.match(QString::fromUtf8(file.read(1 << 20))).hasMatch())
                return true;
        }
    return false;
}

} // namespace

bool desktopHasHandlerForScheme(const std::string& scheme)
{
    QString mimeType = QStringLiteral("x-scheme-handler/") + QString::fromStdString(scheme);
    QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (!xdgMime.isEmpty()) {
        QProcess query;
        query.start(xdgMime, {QStringLiteral("query"), QStringLiteral("default"), mimeType});
        if (query.waitForFinished(3000) && query.exitStatus() == QProcess::NormalExit) {
            if (!query.readAllStandardOutput().trimmed().isEmpty())
                return true;
        } else {
            query.kill();
            query.waitForFinished(1000);
        }
    }
    return mimeappsListsName(mimeType);
}
