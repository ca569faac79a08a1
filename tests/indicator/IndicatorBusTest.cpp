// The indicator against real D-Bus services: UPower and power-profiles-daemon served by
// python3-dbusmock on the private bus the test runs on (it stands for the system bus too).
#include "indicator/AmpwellIndicator.h"
#include "render/QLAWBatteryRenderer.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PlistValue.h"
#include "store/PreferencesStore.h"
#include "support/RunProcess.h"
#include "support/TemporaryRoot.h"

#include "platform/core/PropertyListUpdate.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QSignalSpy>
#include <QPainter>
#include <QDBusArgument>
#include <QDBusMetaType>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

const QString kUPower = QStringLiteral("org.freedesktop.UPower");
const QString kProfiles = QStringLiteral("net.hadess.PowerProfiles");
const std::string kIndicator = std::string(AMPWELL_BINARY_DIR) + "/indicator/ampwell-indicator";
const std::string kAmpwell = std::string(AMPWELL_BINARY_DIR) + "/cli/ampwell";

QApplication& application()
{
    // Both buses are the test's own private one.
    if (const char* session = std::getenv("DBUS_SESSION_BUS_ADDRESS"))
        setenv("DBUS_SYSTEM_BUS_ADDRESS", session, 1);
    static int argc = 1;
    static char name[] = "indicator-tests";
    static char* argv[] = {name, nullptr};
    static QApplication* made = new QApplication(argc, argv);
    return *made;
}

// The same pixels, whatever the two files' formats and colour spaces.
bool samePixels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return false;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixelColor(x, y).rgba() != b.pixelColor(x, y).rgba())
                return false;
    return true;
}

bool waitFor(const std::function<bool()>& done, int milliseconds = 10000)
{
    QElapsedTimer waited;
    waited.start();
    while (!done() && waited.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

// One dbusmock service, stopped with the object.
class MockService {
public:
    MockService(const QString& templateName, const QString& busName) : busName_(busName)
    {
        process_.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-m"), QStringLiteral("dbusmock"),
                                                             QStringLiteral("--template"), templateName});
        waitFor([this] { return registered(); });
    }
    ~MockService() { stop(); }
    void stop()
    {
        process_.terminate();
        process_.waitForFinished(5000);
        waitFor([this] { return !registered(); });
    }
    bool registered() const
    {
        return QDBusConnection::systemBus().interface()->isServiceRegistered(busName_).value();
    }

private:
    QString busName_;
    QProcess process_;
};

class IndicatorBusTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        application();
        ASSERT_TRUE(QDBusConnection::systemBus().isConnected()) << "the test needs a bus (dbus-run-session)";
        upower_ = std::make_unique<MockService>(QStringLiteral("upower"), kUPower);
        profiles_ = std::make_unique<MockService>(QStringLiteral("power_profiles_daemon"), kProfiles);
        ASSERT_TRUE(upower_->registered()) << "python3-dbusmock did not start";
        root_.makeFolder("/var/mobile/Library/Preferences");
        setSettings({{"enabled", PlistValue(true)}});
    }

    void setSettings(const PlistDict& changes)
    {
        updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty,
                               [&](PlistDict& file) { file.addEntriesFrom(changes); });
    }
    void setBattery(double percentage, unsigned state, qint64 secondsToEmpty = 0)
    {
        QVariantMap properties{{QStringLiteral("IsPresent"), true},
                               {QStringLiteral("Percentage"), percentage},
                               {QStringLiteral("State"), QVariant::fromValue(state)},
                               {QStringLiteral("TimeToEmpty"), QVariant::fromValue(secondsToEmpty)}};
        QDBusInterface mock(kUPower, QStringLiteral("/org/freedesktop/UPower"), QStringLiteral("org.freedesktop.DBus.Mock"),
                            QDBusConnection::systemBus());
        QDBusMessage reply = mock.call(QStringLiteral("SetDeviceProperties"),
                                       QVariant::fromValue(QDBusObjectPath(QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice"))),
                                       properties);
        ASSERT_NE(reply.type(), QDBusMessage::ErrorMessage) << reply.errorMessage().toStdString();
    }
    void setProfile(const QString& profile)
    {
        QDBusInterface properties(kProfiles, QStringLiteral("/net/hadess/PowerProfiles"),
                                  QStringLiteral("org.freedesktop.DBus.Properties"), QDBusConnection::systemBus());
        QDBusMessage reply = properties.call(QStringLiteral("Set"), kProfiles, QStringLiteral("ActiveProfile"),
                                             QVariant::fromValue(QDBusVariant(profile)));
        ASSERT_NE(reply.type(), QDBusMessage::ErrorMessage) << reply.errorMessage().toStdString();
    }
    // Runs a program with the test's buses and root; its standard output.
    std::string run(const std::string& program, const std::vector<std::string>& arguments, int* status = nullptr)
    {
        std::vector<std::string> words{"--root", root_.folder()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        ProcessResult result = runProcess(program, words, {{"QT_QPA_PLATFORM", "offscreen"}});
        if (status)
            *status = result.status;
        return result.out;
    }

    TemporaryRoot root_;
    std::unique_ptr<MockService> upower_;
    std::unique_ptr<MockService> profiles_;
};

TEST_F(IndicatorBusTest, FollowsTheBatteryAndThePowerProfileAsTheyChange)
{
    setBattery(80, 2);
    AmpwellIndicator indicator;
    QSignalSpy redrawn(&indicator, &AmpwellIndicator::iconChanged);
    EXPECT_EQ(indicator.state().level, 80);
    EXPECT_FALSE(indicator.state().charging);

    setBattery(15, 2, 3000);
    ASSERT_TRUE(waitFor([&] { return indicator.state().level == 15; }));
    EXPECT_TRUE(indicator.state().low);
    EXPECT_EQ(indicator.state().role, ThemeRole::Secondary);
    EXPECT_EQ(indicator.tooltip().toStdString(), "15 % — 50 min until empty");
    EXPECT_GE(redrawn.count(), 1);

    int before = redrawn.count();
    setBattery(15, 1);
    ASSERT_TRUE(waitFor([&] { return indicator.state().charging; }));
    EXPECT_GT(redrawn.count(), before);

    EXPECT_FALSE(indicator.state().lowPowerMode);
    setProfile(QStringLiteral("power-saver"));
    ASSERT_TRUE(waitFor([&] { return indicator.state().lowPowerMode; }));

    // Without UPower there is no battery; the theme shows a full one.
    upower_->stop();
    ASSERT_TRUE(waitFor([&] { return !indicator.state().batteryPresent; }));
    EXPECT_EQ(indicator.state().level, 100);
    EXPECT_EQ(indicator.tooltip().toStdString(), "No battery");
    profiles_->stop();
    ASSERT_TRUE(waitFor([&] { return !indicator.state().lowPowerMode; }));
}

TEST_F(IndicatorBusTest, ASettingsChangeRedrawsAtOnceAndAVanishedFileKeepsThePicture)
{
    setBattery(60, 2);
    AmpwellIndicator indicator;
    QSignalSpy redrawn(&indicator, &AmpwellIndicator::iconChanged);
    QImage before = indicator.icon();
    setSettings({{"darkColor", PlistValue("#ff0000")}});
    postDarwinNotification(kSettingsChangedNotification);
    UIColor red = UIColor::colorWithRedGreenBlueAlpha(1, 0, 0, 1);
    ASSERT_TRUE(waitFor([&] { return indicator.state().color == red; }, 5000)) << indicatorStateJSON(indicator.state(), 22, 1);
    EXPECT_FALSE(samePixels(indicator.icon(), before));

    QImage redIcon = indicator.icon();
    int redraws = redrawn.count();
    std::remove(preferencesPath().c_str());
    postDarwinNotification(kSettingsChangedNotification);
    ASSERT_TRUE(waitFor([&] { return redrawn.count() > redraws; }, 5000));
    EXPECT_EQ(indicator.state().color, red);
    EXPECT_TRUE(samePixels(indicator.icon(), redIcon));
}

TEST_F(IndicatorBusTest, AFailingThemeGivesWayToTheRingUntilItsFileChanges)
{
    setBattery(60, 2);
    root_.writeFile("/var/mobile/Library/Preferences/Ampwell/Installed/Broken.js", "(c,g,l,m,e){throw new Error('no')}");
    setSettings({{"theme", PlistValue("Broken")}, {"hidePerc", PlistValue(true)}});
    AmpwellIndicator indicator;
    std::uint64_t before = QLAWBatteryRenderer::evaluationCount();
    indicator.refresh();
    indicator.refresh();
    // Only the built-in ring ran, once a refresh; the broken theme was not tried again.
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 2);
    EXPECT_FALSE(indicator.icon().isNull());

    root_.writeFile("/var/mobile/Library/Preferences/Ampwell/Installed/Broken.js", "(c,g,l,m,e){return 'nothing'}");
    before = QLAWBatteryRenderer::evaluationCount();
    indicator.refresh();
    EXPECT_EQ(QLAWBatteryRenderer::evaluationCount(), before + 2); // the changed theme, then the ring
}

TEST_F(IndicatorBusTest, TheReportedStateAndTheIconAgreeWithTheCommandsRender)
{
    setBattery(15, 2);
    setSettings({{"lowLevel", PlistValue(20)}, {"useSecondTheme", PlistValue(true)}, {"secondThemeLimit", PlistValue(20)}});
    std::string state = run(kIndicator, {"--print-state", "--appearance", "light", "--scale", "1"});
    EXPECT_NE(state.find("\"level\": 15"), std::string::npos) << state;
    EXPECT_NE(state.find("\"low\": true"), std::string::npos) << state;
    EXPECT_NE(state.find("\"themeRole\": \"secondary\""), std::string::npos) << state;
    EXPECT_NE(state.find("\"theme\": \"Amp Bar-Thin\""), std::string::npos) << state;

    std::string icon = root_.folder() + "/icon.png";
    std::string battery = root_.folder() + "/battery.png";
    int status = -1;
    run(kIndicator, {"--once", "-o", icon, "--appearance", "light", "--scale", "1"}, &status);
    ASSERT_EQ(status, 0);
    run(kAmpwell, {"render", "--theme", "Amp Bar-Thin", "--height", "22", "--scale", "1", "--level", "15", "--low",
                   "--color", "#000000", "--base-color", "#00000055", "-o", battery}, &status);
    ASSERT_EQ(status, 0);
    // The percentage hides with the secondary theme and nothing charges: the icon is the battery.
    QImage drawn(QString::fromStdString(icon));
    QImage expected(QString::fromStdString(battery));
    ASSERT_FALSE(drawn.isNull());
    EXPECT_TRUE(samePixels(drawn, expected)) << drawn.width() << "x" << drawn.height() << " against " << expected.width()
                                             << "x" << expected.height() << "\n" << state;
}

TEST_F(IndicatorBusTest, OneIndicatorASession)
{
    QProcess first;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    first.setProcessEnvironment(environment);
    first.start(QString::fromStdString(kIndicator), {QStringLiteral("--root"), QString::fromStdString(root_.folder())});
    ASSERT_TRUE(waitFor([] {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(QStringLiteral("com.mossgate.ampwell.Indicator")).value();
    }));
    int status = -1;
    std::string said = run(kIndicator, {}, &status);
    EXPECT_EQ(status, 0);
    EXPECT_NE(said.find("already running"), std::string::npos);
    EXPECT_EQ(first.state(), QProcess::Running);
    first.terminate();
    first.waitForFinished(5000);
}

// A tray on the session bus: dbusmock as the StatusNotifierWatcher that items register with.
class MockTray {
public:
    MockTray()
    {
        process_.start(QStringLiteral("/usr/bin/python3"),
                       {QStringLiteral("-m"), QStringLiteral("dbusmock"), kWatcher, QStringLiteral("/StatusNotifierWatcher"),
                        kWatcher});
        waitFor([] { return QDBusConnection::sessionBus().interface()->isServiceRegistered(kWatcher).value(); });
        QDBusInterface mock(kWatcher, QStringLiteral("/StatusNotifierWatcher"), QStringLiteral("org.freedesktop.DBus.Mock"));
        mock.call(QStringLiteral("AddMethod"), kWatcher, QStringLiteral("RegisterStatusNotifierItem"), QStringLiteral("s"),
                  QString(), QString());
        mock.call(QStringLiteral("AddProperty"), kWatcher, QStringLiteral("IsStatusNotifierHostRegistered"),
                  QVariant::fromValue(QDBusVariant(true)));
        mock.call(QStringLiteral("AddProperty"), kWatcher, QStringLiteral("ProtocolVersion"),
                  QVariant::fromValue(QDBusVariant(0)));
    }
    ~MockTray()
    {
        process_.terminate();
        process_.waitForFinished(5000);
    }
    // The bus name of the item that registered last, or "".
    QString registeredItem()
    {
        QDBusInterface mock(kWatcher, QStringLiteral("/StatusNotifierWatcher"), QStringLiteral("org.freedesktop.DBus.Mock"));
        QDBusMessage reply = mock.call(QStringLiteral("GetMethodCalls"), QStringLiteral("RegisterStatusNotifierItem"));
        const QDBusArgument calls = reply.arguments().value(0).value<QDBusArgument>();
        QString item;
        calls.beginArray();
        while (!calls.atEnd()) {
            qulonglong time = 0;
            QVariantList arguments;
            calls.beginStructure();
            calls >> time >> arguments;
            calls.endStructure();
            if (!arguments.isEmpty()) {
                QVariant first = arguments.front();
                item = first.canConvert<QDBusVariant>() ? first.value<QDBusVariant>().variant().toString() : first.toString();
            }
        }
        calls.endArray();
        return item;
    }
    static inline const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");

private:
    QProcess process_;
};

// The largest picture an item offers as its icon, from its IconPixmap property.
QImage itemIcon(const QString& item)
{
    QDBusMessage call = QDBusMessage::createMethodCall(item, QStringLiteral("/StatusNotifierItem"),
                                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QStringLiteral("org.kde.StatusNotifierItem") << QStringLiteral("IconPixmap");
    QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return {};
    const QDBusArgument pixmaps = reply.arguments().value(0).value<QDBusVariant>().variant().value<QDBusArgument>();
    QImage best;
    pixmaps.beginArray();
    while (!pixmaps.atEnd()) {
        int width = 0, height = 0;
        QByteArray bytes;
        pixmaps.beginStructure();
        pixmaps >> width >> height >> bytes;
        pixmaps.endStructure();
        if (width <= 0 || height <= 0 || bytes.size() != width * height * 4 || width * height <= best.width() * best.height())
            continue;
        // ARGB, most significant byte first.
        QImage image(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData()) + (y * width + x) * 4;
                image.setPixel(x, y, qRgba(p[1], p[2], p[3], p[0]));
            }
        best = image;
    }
    pixmaps.endArray();
    return best;
}

// Tray items are square: a wider icon travels centred in a square of its width.
QImage squared(const QImage& icon)
{
    int side = std::max(icon.width(), icon.height());
    QImage square(side, side, QImage::Format_ARGB32);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    painter.drawImage(QPoint((side - icon.width()) / 2, (side - icon.height()) / 2), icon);
    return square;
}

TEST_F(IndicatorBusTest, RegistersWithTheTrayAndItsIconFollowsTheSettings)
{
    // Qt offers its D-Bus tray item on a real display only: an X server of the test's own.
    QProcess xServer;
    xServer.start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                          QStringLiteral("0"), QStringLiteral("640x480x24"), QStringLiteral("-nolisten"),
                                          QStringLiteral("tcp")});
    if (!xServer.waitForStarted(5000))
        GTEST_SKIP() << "no Xvfb to show the tray item on";
    // Xvfb names the display it took once it is ready.
    waitFor([&] { return xServer.canReadLine() || xServer.state() != QProcess::Running; });
    QString display = QStringLiteral(":") + QString::fromLatin1(xServer.readLine()).trimmed();
    ASSERT_NE(display, QStringLiteral(":")) << "Xvfb did not start";
    setBattery(55, 2);
    MockTray tray;
    QProcess indicator;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("DISPLAY"), display);
    indicator.setProcessEnvironment(environment);
    indicator.start(QString::fromStdString(kIndicator), {QStringLiteral("--root"), QString::fromStdString(root_.folder())});
    ASSERT_TRUE(waitFor([&] { return !tray.registeredItem().isEmpty(); })) << "the item never registered";
    QString item = tray.registeredItem();

    auto onceIcon = [&] {
        std::string path = root_.folder() + "/once.png";
        run(kIndicator, {"--once", "-o", path});
        return QImage(QString::fromStdString(path));
    };
    QImage shown;
    ASSERT_TRUE(waitFor([&] { shown = itemIcon(item); return !shown.isNull(); }));
    EXPECT_TRUE(samePixels(shown, squared(onceIcon())));

    // A change of colour, announced as the settings page announces it, reaches the tray.
    QImage before = shown;
    setSettings({{"darkColor", PlistValue("#ff0000")}, {"lightColor", PlistValue("#ff0000")}});
    postDarwinNotification(kSettingsChangedNotification);
    EXPECT_TRUE(waitFor([&] { shown = itemIcon(item); return !samePixels(shown, before); }, 1000));
    EXPECT_TRUE(samePixels(shown, squared(onceIcon())));

    indicator.terminate();
    indicator.waitForFinished(5000);
    xServer.terminate();
    xServer.waitForFinished(5000);
}

} // namespace
