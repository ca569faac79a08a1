#pragma once

#include "platform/core/UIImage.h"

#include <QWidget>

// A view showing one picture. Template pictures are drawn in the view's tint colour. Inside
// a table row the picture keeps to the row's rounded shape.
class UIImageView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double alpha READ alpha WRITE setAlpha)

public:
    enum class ContentMode { ScaleToFill, ScaleAspectFit, ScaleAspectFill, Center };

    explicit UIImageView(UIImage image = UIImage(), QWidget* parent = nullptr);

    const UIImage& image() const { return image_; }
    void setImage(UIImage image);
    ContentMode contentMode() const { return contentMode_; }
    void setContentMode(ContentMode mode);
    // Draw the picture's shape in the tint colour (the platform's template rendering).
    bool isTemplate() const { return template_; }
    void setTemplate(bool isTemplate);
    double alpha() const { return alpha_; }
    void setAlpha(double alpha);

    // The picture's size in points.
    QSize sizeHint() const override;
    void sizeToFit() { resize(sizeHint()); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    UIImage image_;
    ContentMode contentMode_ = ContentMode::ScaleToFill;
    bool template_ = false;
    double alpha_ = 1.0;
};
