#include "UITextField.h"

#include "UIView.h"

UITextField::UITextField(QWidget* parent) : QLineEdit(parent)
{
    setFont(systemFont(13));
    setMinimumHeight(26);
    setStyleSheet(QStringLiteral("QLineEdit { background: white; border: 0.5px solid rgba(0,0,0,0.25);"
                                 " border-radius: 5px; padding: 2px 5px; }"));
}

void UITextField::setKeyboardType(KeyboardType type)
{
    keyboardType_ = type;
    setInputMethodHints(type == UIKeyboardTypeNumberPad ? Qt::ImhDigitsOnly : Qt::ImhNone);
}

void UITextField::setInputAccessoryView(QWidget* view)
{
    accessory_ = view;
    emit accessoryViewChanged();
}

void UITextField::becomeFirstResponder()
{
    setFocus(Qt::OtherFocusReason);
}

void UITextField::resignFirstResponder()
{
    clearFocus();
}
