#pragma once

#include "platform/core/UIColor.h"

#include <QString>
#include <QWidget>

// A swatch of the chosen colour with its hex text under it, "#rrggbb" in lower case.
class CPColorInfoView : public QWidget {
    Q_OBJECT

public:
    explicit CPColorInfoView(QWidget* parent = nullptr);

    const UIColor& color() const { return color_; }
    void setColor(const UIColor& color);

    // Each channel times 255, truncated (after clamping to 0..1), packed as "#%06x".
    static QString hexTextForColor(const UIColor& color);
    QString text() const { return hexTextForColor(color_); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    UIColor color_ = UIColor::whiteColor();
};
