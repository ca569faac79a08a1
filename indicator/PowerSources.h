#pragma once

#include "BatteryState.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

class QDBusServiceWatcher;

// The battery and power profile as the system tells them: UPower's display device and
// power-profiles-daemon's active profile, both on the system bus. It reads them once and then
// only when they announce a change (or their service comes or goes); it never polls. A missing
// service or bus reads as no battery and no power saver.
class PowerSources : public QObject {
    Q_OBJECT

public:
    explicit PowerSources(QDBusConnection bus, QObject* parent = nullptr);

    const BatteryState& state() const { return state_; }
    // Reads both services again.
    void reload();

signals:
    void changed();

private slots:
    void batteryPropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    void profilePropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    void servicesChanged();

private:
    void readBattery();
    void readProfile();
    void takeBatteryProperties(const QVariantMap& properties);

    QDBusConnection bus_;
    BatteryState state_;
    QDBusServiceWatcher* watcher_;
};
