#include "DarwinNotifyCenter.h"

#include "SystemLog.h"

#include <gio/gio.h>

#include <deque>
#include <mutex>

namespace {

struct BusName {
    std::string interface;
    std::string member;
    std::string objectPath;
};

std::optional<BusName> splitName(std::string_view name)
{
    std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos)
        return std::nullopt;
    BusName bus{std::string(name.substr(0, dot)), std::string(name.substr(dot + 1)), "/"};
    if (!g_dbus_is_interface_name(bus.interface.c_str()) || !g_dbus_is_member_name(bus.member.c_str()))
        return std::nullopt;
    for (char c : bus.interface)
        bus.objectPath += c == '.' ? '/' : c;
    return bus;
}

// The session bus connection, made once per process; null when there is none.
GDBusConnection* sessionBus(std::string* failure)
{
    static std::once_flag once;
    static GDBusConnection* connection = nullptr;
    static std::string reason;
    std::call_once(once, [] {
        GError* error = nullptr;
        connection = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
        if (!connection) {
            reason = error ? error->message : "unknown error";
            g_clear_error(&error);
        } else {
            // The command exits right after posting; its exit must not end the process early
            // through the bus's own exit-on-close handling.
            g_dbus_connection_set_exit_on_close(connection, FALSE);
        }
    });
    if (!connection && failure)
        *failure = reason;
    return connection;
}

} // namespace

bool isValidNotificationName(std::string_view name)
{
    return splitName(name).has_value();
}

void postDarwinNotification(std::string_view name)
{
    std::optional<BusName> bus = splitName(name);
    if (!bus) {
        systemLog("AMPW: notification name not postable: " + std::string(name));
        return;
    }
    std::string failure;
    GDBusConnection* connection = sessionBus(&failure);
    if (!connection) {
        systemLog("AMPW: no session bus, notification " + std::string(name) + " dropped (" + failure + ")");
        return;
    }
    GError* error = nullptr;
    if (!g_dbus_connection_emit_signal(connection, nullptr, bus->objectPath.c_str(), bus->interface.c_str(),
                                       bus->member.c_str(), nullptr, &error)) {
        systemLog("AMPW: notification " + std::string(name) + " dropped (" + error->message + ")");
        g_clear_error(&error);
        return;
    }
    g_dbus_connection_flush_sync(connection, nullptr, nullptr);
}

struct DarwinNotificationListener::State {
    std::string name;
    GMainContext* context = nullptr;
    GDBusConnection* connection = nullptr;
    guint subscription = 0;
    std::deque<std::string> received;

    static void onSignal(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*,
                         gpointer data)
    {
        auto* state = static_cast<State*>(data);
        state->received.push_back(state->name);
    }
};

DarwinNotificationListener::DarwinNotificationListener(std::string name) : state_(std::make_unique<State>())
{
    state_->name = std::move(name);
    state_->context = g_main_context_new();
    std::optional<BusName> bus = splitName(state_->name);
    state_->connection = bus ? sessionBus(nullptr) : nullptr;
    if (!state_->connection)
        return;
    g_main_context_push_thread_default(state_->context);
    state_->subscription = g_dbus_connection_signal_subscribe(
        state_->connection, nullptr, bus->interface.c_str(), bus->member.c_str(), nullptr, nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, &State::onSignal, state_.get(), nullptr);
    g_main_context_pop_thread_default(state_->context);

    // A round trip to the bus: once it answers, the match rule above is in force, so a post
    // made after this constructor returns is not missed.
    GVariant* reply = g_dbus_connection_call_sync(state_->connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                  "org.freedesktop.DBus", "GetId", nullptr, nullptr,
                                                  G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr);
    if (reply)
        g_variant_unref(reply);
}

DarwinNotificationListener::~DarwinNotificationListener()
{
    if (state_->subscription)
        g_dbus_connection_signal_unsubscribe(state_->connection, state_->subscription);
    // Let the unsubscription's pending callbacks run out on our context before it goes.
    while (g_main_context_iteration(state_->context, FALSE)) {
    }
    g_main_context_unref(state_->context);
}

bool DarwinNotificationListener::isListening() const
{
    return state_->subscription != 0;
}

std::optional<std::string> DarwinNotificationListener::waitForNext(std::chrono::milliseconds timeout)
{
    auto deadline = std::chrono::steady_clock::now() + timeout;
    while (state_->received.empty()) {
        auto remaining = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (remaining.count() <= 0 || !isListening())
            break;
        GSource* timer = g_timeout_source_new(static_cast<guint>(remaining.count()));
        g_source_set_callback(timer, [](gpointer) -> gboolean { return G_SOURCE_REMOVE; }, nullptr, nullptr);
        g_source_attach(timer, state_->context);
        g_main_context_iteration(state_->context, TRUE);
        g_source_destroy(timer);
        g_source_unref(timer);
    }
    if (state_->received.empty())
        return std::nullopt;
    std::string name = std::move(state_->received.front());
    state_->received.pop_front();
    return name;
}
