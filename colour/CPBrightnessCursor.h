#pragma once

#include "platform/core/UIColor.h"

#include <QWidget>

// The round knob that rides on the brightness slider's track, filled with the chosen colour.
// It never takes the mouse: the slider under it handles clicks and drags.
class CPBrightnessCursor : public QWidget {
    Q_OBJECT

public:
    explicit CPBrightnessCursor(QWidget* parent = nullptr);

    // The knob's side in points.
    static double cursorSize();

    const UIColor& color() const { return color_; }
    void setColor(const UIColor& color);
    bool showsFocus() const { return showsFocus_; }
    void setShowsFocus(bool shows);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    UIColor color_ = UIColor::whiteColor();
    bool showsFocus_ = false;
};
