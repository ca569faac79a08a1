#pragma once

#include "platform/core/UIImage.h"

#include <QAbstractButton>

// A borderless button: its title in the tint colour (dimmed while pressed), or a picture
// as its background.
class UIButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit UIButton(const QString& title = QString(), QWidget* parent = nullptr);

    void setBackgroundImage(UIImage image);
    const UIImage& backgroundImage() const { return background_; }
    void setTitleFont(const QFont& font);
    // Whether the title is drawn bold (the cancel button of an alert).
    void setEmphasised(bool emphasised);
    // Draws the back chevron before the title (the navigation bar's back button).
    void setBackChevron(bool chevron);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    UIImage background_;
    bool emphasised_ = false;
    bool chevron_ = false;
};
