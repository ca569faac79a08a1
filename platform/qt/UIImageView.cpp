#include "UIImageView.h"

#include "PSTableCell.h"
#include "QtConversions.h"
#include "UIView.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

UIImageView::UIImageView(UIImage image, QWidget* parent) : QWidget(parent), image_(std::move(image))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (image_)
        sizeToFit();
}

void UIImageView::setImage(UIImage image)
{
    image_ = std::move(image);
    update();
}

void UIImageView::setContentMode(ContentMode mode)
{
    contentMode_ = mode;
    update();
}

void UIImageView::setTemplate(bool isTemplate)
{
    template_ = isTemplate;
    update();
}

void UIImageView::setAlpha(double alpha)
{
    alpha_ = std::clamp(std::isfinite(alpha) ? alpha : 1.0, 0.0, 1.0);
    update();
}

QSize UIImageView::sizeHint() const
{
    CGSize size = image_.size();
    return QSize(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
}

void UIImageView::paintEvent(QPaintEvent*)
{
    if (!image_ || alpha_ <= 0 || width() <= 0 || height() <= 0)
        return;
    QImage picture = toQImage(image_);
    if (template_) {
        QPainter recolour(&picture);
        recolour.setCompositionMode(QPainter::CompositionMode_SourceIn);
        recolour.fillRect(QRectF(QPointF(0, 0), picture.deviceIndependentSize()),
                          toQColor(UIView::effectiveTintColor(this)));
    }
    QSizeF source = picture.deviceIndependentSize();
    QRectF target(rect());
    if (contentMode_ != ContentMode::ScaleToFill && source.width() > 0 && source.height() > 0) {
        QSizeF size = source;
        if (contentMode_ == ContentMode::ScaleAspectFit)
            size.scale(target.size(), Qt::KeepAspectRatio);
        else if (contentMode_ == ContentMode::ScaleAspectFill)
            size.scale(target.size(), Qt::KeepAspectRatioByExpanding);
        target = QRectF(target.center() - QPointF(size.width() / 2, size.height() / 2), size);
    }

    QPainter painter(this);
    painter.setOpacity(alpha_);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    // The picture is painted once, inside its place; a brush would tile it across the view.
    QPainterPath clip;
    clip.addRect(QRectF(rect()).intersected(target));
    for (QWidget* ancestor = parentWidget(); ancestor; ancestor = ancestor->parentWidget())
        if (auto* cell = dynamic_cast<PSTableCell*>(ancestor)) {
            clip = clip.intersected(cell->backgroundShape().translated(-mapTo(cell, QPoint(0, 0))));
            break;
        }
    // Filling the shape with the picture keeps its rounded edges smooth, which a clip would not.
    picture.setDevicePixelRatio(1);
    QTransform place = QTransform::fromTranslate(target.x(), target.y())
                           .scale(target.width() / picture.width(), target.height() / picture.height());
    QBrush brush(picture);
    brush.setTransform(place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawPath(clip);
}
