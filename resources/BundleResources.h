#pragma once

#include <QString>
#include <QStringList>

// The component's bundle compiled into the program as a Qt resource: the pictures at 1x, 2x
// and 3x ("<name>.png", "<name>@2x.png", "<name>@3x.png") and one string table per language
// ("<language>.lproj/Localizable.strings"), all under one folder that plays the part of the
// bundle directory on the device.
namespace ampwell::resources {

// ":/bundle", the bundle's root folder.
QString bundleRoot();

// The languages that have a string table, sorted ("de", "en", ...).
QStringList bundleLanguages();

} // namespace ampwell::resources
