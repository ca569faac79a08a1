#pragma once

#include <optional>
#include <string>

// The desktop's clipboard, as the phone's general pasteboard.
class UIPasteboard {
public:
    static UIPasteboard& generalPasteboard();

    // The text on it, or nothing when it holds no text.
    std::optional<std::string> string() const;
    void setString(const std::string& text);
};
