#pragma once

#include <QLineEdit>
#include <QPointer>

#include <string>

// A one-line text field; its input accessory view is shown right under it while it has the
// keyboard (off the phone there is no on-screen keyboard to sit on).
class UITextField : public QLineEdit {
    Q_OBJECT

public:
    enum KeyboardType { UIKeyboardTypeDefault = 0, UIKeyboardTypeNumberPad = 4 };

    explicit UITextField(QWidget* parent = nullptr);

    std::string textString() const { return text().toStdString(); }
    void setTextString(const std::string& text) { setText(QString::fromStdString(text)); }

    KeyboardType keyboardType() const { return keyboardType_; }
    void setKeyboardType(KeyboardType type);
    QWidget* inputAccessoryView() const { return accessory_; }
    void setInputAccessoryView(QWidget* view);

    void becomeFirstResponder();
    void resignFirstResponder();
    bool isFirstResponder() const { return hasFocus(); }

signals:
    void accessoryViewChanged();

private:
    KeyboardType keyboardType_ = UIKeyboardTypeDefault;
    QPointer<QWidget> accessory_;
};
