#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// The application: its key window, and the desktop's handlers for opening URLs.
class UIApplication {
public:
    static UIApplication& sharedApplication();

    QWidget* keyWindow() const { return keyWindow_; }
    void setKeyWindow(QWidget* window) { keyWindow_ = window; }

    // Hands the URL to the handler the desktop registered for its scheme. False for text
    // that is no URL with a scheme, or when nothing opened it.
    bool openURL(const std::string& url);
    // Whether the desktop has a handler for the URL's scheme.
    bool canOpenURL(const std::string& url) const;

    // Tests see the URLs instead of a browser starting, and decide which schemes have handlers.
    using URLOpener = std::function<bool(const std::string& url)>;
    using SchemeQuery = std::function<bool(const std::string& scheme)>;
    void setURLOpenerForTesting(URLOpener opener) { opener_ = std::move(opener); }
    void setSchemeQueryForTesting(SchemeQuery query) { schemeQuery_ = std::move(query); }

private:
    QPointer<QWidget> keyWindow_;
    URLOpener opener_;
    SchemeQuery schemeQuery_;
};

// The scheme of a URL text ("mailto" of "mailto:a@b"), or nothing when it has none.
std::optional<std::string> urlScheme(const std::string& url);

// Whether the desktop has a handler for the scheme: xdg-mime's default for
// x-scheme-handler/<scheme>, else the mimeapps lists.
bool desktopHasHandlerForScheme(const std::string& scheme);
