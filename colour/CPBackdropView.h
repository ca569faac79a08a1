#pragma once

#include "platform/core/UIColor.h"

#include <QWidget>

// A faint wash of the chosen colour behind the whole picker. It lies under every other part
// and lets every click through.
class CPBackdropView : public QWidget {
    Q_OBJECT

public:
    explicit CPBackdropView(QWidget* parent = nullptr);

    const UIColor& backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(const UIColor& color);
    // The layer's opacity: how strongly the colour shows.
    double opacity() const { return opacity_; }
    void setOpacity(double opacity);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    UIColor backgroundColor_ = UIColor::clearColor();
    double opacity_ = 1;
};
