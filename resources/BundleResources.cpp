#include "BundleResources.h"

#include <QDir>

namespace ampwell::resources {

QString bundleRoot()
{
    return QStringLiteral(":/bundle");
}

QStringList bundleLanguages()
{
    const QStringList folders =
        QDir(bundleRoot()).entryList({QStringLiteral("*.lproj")}, QDir::Dirs, QDir::Name);
    QStringList languages;
    for (const QString& folder : folders) {
        if (QFile::exists(bundleRoot() + u'/' + folder + QStringLiteral("/Localizable.strings")))
            languages.append(folder.chopped(6));
    }
    return languages;
}

} // namespace ampwell::resources
