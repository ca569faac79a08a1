#include "Command.h"

#include "store/PreferencesStore.h"

#include "platform/core/DarwinNotifyCenter.h"

#include <charconv>
#include <iostream>

namespace {

int runWatch(const CommandLine& line)
{
    if (!line.positional.empty())
        return usageError("watch", "takes no arguments");
    long count = -1;
    if (std::optional<std::string> text = line.value("--count")) {
        auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), count);
        if (error != std::errc() || end != text->data() + text->size() || count < 1)
            return usageError("watch", "--count takes a whole number above 0");
    }
    DarwinNotificationListener listener{std::string(kSettingsChangedNotification)};
    if (!listener.isListening())
        return failure("watch", "no session bus to listen on (is DBUS_SESSION_BUS_ADDRESS set?)");
    for (long received = 0; count < 0 || received < count;) {
        if (std::optional<std::string> name = listener.waitForNext(std::chrono::hours(1))) {
            std::cout << *name << std::endl;
            ++received;
        }
    }
    return 0;
}

} // namespace

std::vector<Command> watchCommands()
{
    return {{"watch", "print each change notification as it arrives",
             "Usage: ampwell watch [--count N]\n\n"
             "Prints one line with the notification's name for every settings change\n"
             "notification on the session bus; stops after N when --count is given.\n",
             {{"--count", true}},
             runWatch}};
}
