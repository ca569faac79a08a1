#pragma once

#include <QPointer>
#include <QWidget>

#include <optional>
#include <string>
#include <vector>

class UIAlertView;
class UIButton;
class UITextField;
class QVBoxLayout;

// Receives an alert's button presses; both calls are optional.
class UIAlertViewDelegate {
public:
    virtual ~UIAlertViewDelegate() = default;
    virtual void alertViewClickedButtonAtIndex(UIAlertView*, int) {}
    virtual void alertViewDidDismissWithButtonIndex(UIAlertView*, int) {}
};

// A centred alert over the key window with a title, a message, optionally one text field
// and its buttons. Showing it never blocks: the delegate hears of the press afterwards.
// The cancel button, when there is one, has index 0; the others follow in order.
class UIAlertView : public QWidget {
    Q_OBJECT

public:
    enum Style { UIAlertViewStyleDefault = 0, UIAlertViewStylePlainTextInput = 2 };

    UIAlertView(std::string title, std::string message, UIAlertViewDelegate* delegate,
                std::optional<std::string> cancelButtonTitle, std::vector<std::string> otherButtonTitles);
    ~UIAlertView() override;

    const std::string& title() const { return title_; }
    const std::string& message() const { return message_; }
    // The delegate, or null once it is gone (a page closed while its alert stood).
    UIAlertViewDelegate* delegate() const;
    int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }
    Style alertViewStyle() const { return style_; }
    void setAlertViewStyle(Style style);
    // The text field of the plain-text-input style, else null.
    UITextField* textFieldAtIndex(int index) const;

    int numberOfButtons() const { return static_cast<int>(buttonTitles_.size()); }
    int cancelButtonIndex() const { return hasCancel_ ? 0 : -1; }
    std::string buttonTitleAtIndex(int index) const;

    void show();
    bool isVisibleAlert() const { return shown_; }
    // Presses the button as the user would: the delegate hears the click, the alert goes,
    // the delegate hears the dismissal. Out-of-range indices do nothing.
    void clickButtonAtIndex(int index);
    // Removes the alert; the delegate hears only of the dismissal.
    void dismissWithClickedButtonIndex(int index, bool animated = true);

    // The alerts shown and not yet dismissed, oldest first; only the newest is on screen, the
    // others come back in turn as the ones above them go.
    static std::vector<UIAlertView*> visibleAlerts();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void place();

    std::string title_;
    std::string message_;
    UIAlertViewDelegate* delegate_;
    // Watches the delegate when it is a Qt object, so that a deleted one is never called.
    QPointer<QObject> delegateObject_;
    bool delegateWatched_ = false;
    bool hasCancel_;
    std::vector<std::string> buttonTitles_;
    int tag_ = 0;
    Style style_ = UIAlertViewStyleDefault;
    bool shown_ = false;
    QWidget* box_ = nullptr;
    QVBoxLayout* accessoryHolder_ = nullptr;
    UITextField* field_ = nullptr;
    std::vector<UIButton*> buttons_;
    // Where the keyboard was before the alert took it; it goes back there when the last alert goes.
    QPointer<QWidget> previousFocus_;
};
