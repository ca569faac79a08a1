#include "AmpwellIndicator.h"

#include "IndicatorIcon.h"
#include "IndicatorTooltip.h"
#include "PowerSources.h"

#include "render/QLAWBatteryRenderer.h"
#include "store/PreferencesStore.h"
#include "store/ThemeScripts.h"

#include "platform/core/Root.h"
#include "platform/core/SystemLog.h"
#include "platform/core/UIScreen.h"
#include "platform/qt/NSBundle.h"

#include <QAction>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QMenu>
#include <QPalette>
#include <QPixmap>
#include <QProcess>
#include <QStandardPaths>
#include <QSystemTrayIcon>

#include <iostream>

namespace {

const QString kSettingsPath = QStringLiteral("/com/mossgate/ampwell");
const QString kSettingsInterface = QStringLiteral("com.mossgate.ampwell");
const QString kStatusNotifierWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");

std::string translated(const std::string& key)
{
    return NSBundle::mainBundle().localizedStringForKey(key, key);
}

// The settings program beside this one (a build tree or an installation), else on the PATH.
QString settingsProgram()
{
    QDir here(QCoreApplication::applicationDirPath());
    for (const QString& candidate : {here.filePath(QStringLiteral("ampwell-settings")),
                                     here.filePath(QStringLiteral("../app/ampwell-settings"))})
        if (QFileInfo(candidate).isExecutable())
            return candidate;
    QString found = QStandardPaths::findExecutable(QStringLiteral("ampwell-settings"));
    return found.isEmpty() ? QStringLiteral("ampwell-settings") : found;
}

} // namespace

AmpwellIndicator::AmpwellIndicator(IndicatorOverrides overrides, QObject* parent)
    : QObject(parent), overrides_(overrides)
{
    power_ = new PowerSources(QDBusConnection::systemBus(), this);
    connect(power_, &PowerSources::changed, this, &AmpwellIndicator::refresh);
    QDBusConnection session = QDBusConnection::sessionBus();
    if (session.isConnected())
        session.connect(QString(), kSettingsPath, kSettingsInterface, QStringLiteral("settingsChanged"), this,
                        SLOT(settingsChanged()));
    themeWatcher_ = new QFileSystemWatcher(this);
    connect(themeWatcher_, &QFileSystemWatcher::directoryChanged, this, &AmpwellIndicator::refresh);
    connect(themeWatcher_, &QFileSystemWatcher::fileChanged, this, &AmpwellIndicator::refresh);
    qApp->installEventFilter(this);
    readSettings();
    refresh();
}

AmpwellIndicator::~AmpwellIndicator()
{
    if (qApp)
        qApp->removeEventFilter(this);
    delete menu_;
}

void AmpwellIndicator::showInTray()
{
    if (!tray_) {
        tray_ = new QSystemTrayIcon(this);
        menu_ = new QMenu();
        QAction* settings = menu_->addAction(QString::fromStdString(translated("INDICATOR_SETTINGS")));
        connect(settings, &QAction::triggered, this, [] { QProcess::startDetached(settingsProgram(), {}); });
        QAction* quit = menu_->addAction(QString::fromStdString(translated("INDICATOR_QUIT")));
        connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit);
        tray_->setContextMenu(menu_);
        auto* trays = new QDBusServiceWatcher(kStatusNotifierWatcher, QDBusConnection::sessionBus(),
                                              QDBusServiceWatcher::WatchForRegistration, this);
        connect(trays, &QDBusServiceWatcher::serviceRegistered, this, &AmpwellIndicator::trayAppeared);
    }
    refresh();
    tray_->show();
    if (!QSystemTrayIcon::isSystemTrayAvailable() && !saidNoTray_) {
        saidNoTray_ = true;
        std::string message = "ampwell-indicator: the desktop offers no tray; waiting for one to appear";
        std::cerr << message << "\n";
        systemLog("AMPW: " + message);
    }
}

void AmpwellIndicator::setOverrides(const IndicatorOverrides& overrides)
{
    overrides_ = overrides;
    refresh();
}

void AmpwellIndicator::trayAppeared()
{
    if (!tray_)
        return;
    // Shown again, the icon registers with the tray that has just come.
    tray_->hide();
    tray_->show();
}

BatteryState AmpwellIndicator::battery() const
{
    BatteryState battery = power_->state();
    if (overrides_.present)
        battery.present = *overrides_.present;
    if (overrides_.level) {
        battery.present = overrides_.present.value_or(true);
        battery.percentage = *overrides_.level;
    }
    if (overrides_.charging)
        battery.charge = *overrides_.charging ? BatteryState::Charge::Charging : BatteryState::Charge::Discharging;
    if (overrides_.fullyCharged && *overrides_.fullyCharged)
        battery.charge = BatteryState::Charge::FullyCharged;
    if (overrides_.powerSaver)
        battery.powerSaver = *overrides_.powerSaver;
    return battery;
}

IndicatorState AmpwellIndicator::state() const
{
    return indicatorState(settings_, battery(), panelAppearance());
}

double AmpwellIndicator::iconHeight() const
{
    if (overrides_.height)
        return *overrides_.height;
    if (tray_ && tray_->geometry().height() > 0)
        return tray_->geometry().height();
    return kDefaultHeight;
}

double AmpwellIndicator::iconScale() const
{
    if (overrides_.scale)
        return *overrides_.scale;
    return qApp ? static_cast<QGuiApplication*>(qApp)->devicePixelRatio() : 1.0;
}

QString AmpwellIndicator::tooltip() const
{
    return QString::fromStdString(indicatorTooltip(battery(), translated));
}

int AmpwellIndicator::panelAppearance() const
{
    if (overrides_.appearance)
        return *overrides_.appearance;
    // The panel follows the desktop's colours: a dark window colour means a dark panel.
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128 ? 1 : 0;
}

QColor AmpwellIndicator::panelTextColour() const
{
    return panelAppearance() == 1 ? QColor(Qt::white) : QColor(Qt::black);
}

void AmpwellIndicator::readSettings()
{
    // A settings file that went away or cannot be read leaves the picture as it was; one that
    // never was means the defaults.
    if (std::optional<PlistDict> read = loadPreferences()) {
        settings_ = std::move(*read);
        haveSettings_ = true;
    } else if (!haveSettings_) {
        settings_ = PlistDict();
    }
    watchThemeFiles();
}

void AmpwellIndicator::watchThemeFiles()
{
    QStringList paths;
    for (std::string_view folder : kThemeFolders)
        if (QString path = QString::fromStdString(Root::path(folder)); QFileInfo(path).isDir())
            paths << path;
    for (const char* key : {"theme", "secondTheme", "chargeTheme"}) {
        PlistValue theme = effectiveSetting(settings_, key);
        const std::string* name = theme.asString();
        if (!name)
            continue;
        for (std::string_view folder : kThemeFolders) {
            QString file = QString::fromStdString(Root::path(std::string(folder) + "/" + *name + ".js"));
            if (QFileInfo::exists(file))
                paths << file;
        }
    }
    QStringList watched = themeWatcher_->directories() + themeWatcher_->files();
    for (const QString& path : watched)
        if (!paths.contains(path))
            themeWatcher_->removePath(path);
    for (const QString& path : paths)
        if (!watched.contains(path))
            themeWatcher_->addPath(path);
}

void AmpwellIndicator::settingsChanged()
{
    readSettings();
    refresh();
}

UIImage AmpwellIndicator::renderBattery(const IndicatorState& state)
{
    UIScreen::mainScreen().setScale(iconScale());
    double height = iconHeight();
    // A theme that failed is not tried again until its file changes (and so its text).
    if (std::optional<std::string> script = getThemeScriptWithName(state.theme);
        script && !failedScripts_.contains(*script)) {
        if (UIImage image = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(
                renderSettingsForState(state, *script, height), state.appearance))
            return image;
        failedScripts_.insert(*script);
    }
    return QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(
        renderSettingsForState(state, std::string(kBuiltInPreviewScript), height), state.appearance);
}

void AmpwellIndicator::refresh()
{
    IndicatorState current = state();
    if (current.enabled)
        icon_ = composeIndicatorIcon(current, renderBattery(current), iconHeight(), iconScale(), panelTextColour());
    else
        icon_ = standardBatteryIcon(current.level, current.charging, iconHeight(), iconScale(), panelTextColour());
    if (tray_) {
        tray_->setIcon(QIcon(QPixmap::fromImage(icon_)));
        tray_->setToolTip(tooltip());
    }
    emit iconChanged(icon_);
}

bool AmpwellIndicator::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        refresh();
    return QObject::eventFilter(watched, event);
}
