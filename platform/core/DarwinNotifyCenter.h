#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The system-wide named notification, carried as a signal on the session bus: the name
// "a.b.c.member" becomes interface "a.b.c", member "member", object path "/a/b/c", no
// arguments. Without a session bus a post is dropped with one log line; nothing fails.
void postDarwinNotification(std::string_view name);

// True when the name splits into a valid bus interface and member.
bool isValidNotificationName(std::string_view name);

// Receives the notifications of one name, for as long as it lives.
class DarwinNotificationListener {
public:
    explicit DarwinNotificationListener(std::string name);
    ~DarwinNotificationListener();
    DarwinNotificationListener(const DarwinNotificationListener&) = delete;
    DarwinNotificationListener& operator=(const DarwinNotificationListener&) = delete;

    // False when there is no session bus to listen on.
    bool isListening() const;
    // Waits for the next notification and returns its name; nothing on timeout.
    std::optional<std::string> waitForNext(std::chrono::milliseconds timeout);

private:
    struct State;
    std::unique_ptr<State> state_;
};
