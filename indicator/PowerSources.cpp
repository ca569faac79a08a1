#include "PowerSources.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace {

const QString kUPower = QStringLiteral("org.freedesktop.UPower");
const QString kDisplayDevice = QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice");
const QString kDeviceInterface = QStringLiteral("org.freedesktop.UPower.Device");
const QString kProfiles = QStringLiteral("net.hadess.PowerProfiles");
const QString kProfilesPath = QStringLiteral("/net/hadess/PowerProfiles");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
// A call must never hold the tray up for long: a service that hangs reads as absent.
constexpr int kCallTimeoutMilliseconds = 2000;

QVariantMap allProperties(QDBusConnection& bus, const QString& service, const QString& path, const QString& interface)
{
    if (!bus.isConnected())
        return {};
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, kProperties, QStringLiteral("GetAll"));
    call << interface;
    QDBusReply<QVariantMap> reply = bus.call(call, QDBus::Block, kCallTimeoutMilliseconds);
    return reply.isValid() ? reply.value() : QVariantMap();
}

} // namespace

PowerSources::PowerSources(QDBusConnection bus, QObject* parent) : QObject(parent), bus_(std::move(bus))
{
    watcher_ = new QDBusServiceWatcher(this);
    watcher_->setConnection(bus_);
    watcher_->setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_->addWatchedService(kUPower);
    watcher_->addWatchedService(kProfiles);
    connect(watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &PowerSources::servicesChanged);
    if (bus_.isConnected()) {
        bus_.connect(kUPower, kDisplayDevice, kProperties, QStringLiteral("PropertiesChanged"), this,
                     SLOT(batteryPropertiesChanged(QString, QVariantMap, QStringList)));
        bus_.connect(kProfiles, kProfilesPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                     SLOT(profilePropertiesChanged(QString, QVariantMap, QStringList)));
    }
    readBattery();
    readProfile();
}

void PowerSources::reload()
{
    readBattery();
    readProfile();
    emit changed();
}

void PowerSources::readBattery()
{
    state_ = BatteryState{.powerSaver = state_.powerSaver};
    takeBatteryProperties(allProperties(bus_, kUPower, kDisplayDevice, kDeviceInterface));
}

void PowerSources::takeBatteryProperties(const QVariantMap& properties)
{
    if (properties.contains(QStringLiteral("IsPresent")))
        state_.present = properties.value(QStringLiteral("IsPresent")).toBool();
    if (properties.contains(QStringLiteral("Percentage")))
        state_.percentage = properties.value(QStringLiteral("Percentage")).toDouble();
    if (properties.contains(QStringLiteral("State"))) {
        uint charge = properties.value(QStringLiteral("State")).toUInt();
        state_.charge = charge <= 6 ? static_cast<BatteryState::Charge>(charge) : BatteryState::Charge::Unknown;
    }
    if (properties.contains(QStringLiteral("TimeToEmpty")))
        state_.secondsToEmpty = properties.value(QStringLiteral("TimeToEmpty")).toLongLong();
    if (properties.contains(QStringLiteral("TimeToFull")))
        state_.secondsToFull = properties.value(QStringLiteral("TimeToFull")).toLongLong();
}

void PowerSources::readProfile()
{
    QVariantMap properties = allProperties(bus_, kProfiles, kProfilesPath, kProfiles);
    state_.powerSaver = properties.value(QStringLiteral("ActiveProfile")).toString() == QStringLiteral("power-saver");
}

void PowerSources::batteryPropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated)
{
    if (interface != kDeviceInterface)
        return;
    if (!invalidated.isEmpty())
        readBattery();
    else
        takeBatteryProperties(changed);
    emit this->changed();
}

void PowerSources::profilePropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated)
{
    if (interface != kProfiles)
        return;
    if (changed.contains(QStringLiteral("ActiveProfile")))
        state_.powerSaver = changed.value(QStringLiteral("ActiveProfile")).toString() == QStringLiteral("power-saver");
    else if (!invalidated.isEmpty())
        readProfile();
    emit this->changed();
}

void PowerSources::servicesChanged()
{
    reload();
}
