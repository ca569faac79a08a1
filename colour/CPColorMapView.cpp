#include "CPColorMapView.h"

#include "CPAccessibility.h"
#include "CPColorCursor.h"
#include "CPColorMapImages.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/UIScreen.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

std::optional<double> validLimit(std::optional<double> limit)
{
    if (!limit)
        return std::nullopt;
    return clampUnit(*limit);
}

std::optional<double> validTileSize(std::optional<double> tileSize)
{
    if (!tileSize || !std::isfinite(*tileSize) || *tileSize <= 0)
        return std::nullopt;
    return tileSize;
}

CGPoint pointOf(const QMouseEvent* event)
{
    return {event->position().x(), event->position().y()};
}

} // namespace

CPColorMapView::CPColorMapView(QWidget* parent)
    : QWidget(parent), imageQueue_(this, [this](CPColorMapImageQueue::Result result) { imagesReady(std::move(result)); })
{
    setFocusPolicy(Qt::NoFocus);
    colorCursor_ = CPColorCursor::colorCursorWithPoint(CGPoint{0, 0}, this);
    colorCursor_->hide();
    hostColorCursor();
    registerAccessiblePart(this, QAccessible::Slider, QStringLiteral("Colour map"));
    setAccessibleValue(this, accessibleValueText());
}

CPColorMapView::CPColorMapView(CGRect frame, std::optional<double> saturationUpperLimit, QWidget* parent)
    : CPColorMapView(parent)
{
    FrameAdditions::setFrame(this, frame);
    setSaturationUpperLimit(saturationUpperLimit);
}

CPColorMapView::~CPColorMapView()
{
    if (colorCursor_ && colorCursor_->parent() != this)
        delete colorCursor_.data();
}

UIImage CPColorMapView::colorMapImageWithSizeTileSizeSaturationUpperLimit(CGSize size, double tileSize,
                                                                          double saturationUpperLimit)
{
    return CPColorMapImages::colorMapImage(size, tileSize, saturationUpperLimit, 0);
}

UIImage CPColorMapView::backgroundImageWithSizeTileSize(CGSize size, double tileSize)
{
    return CPColorMapImages::backgroundImage(size, tileSize, 0);
}

CPColorMapView* CPColorMapView::colorMapWithFrame(CGRect frame, QWidget* parent)
{
    return new CPColorMapView(frame, std::nullopt, parent);
}

CPColorMapView* CPColorMapView::colorMapWithFrameSaturationUpperLimit(CGRect frame, double saturationUpperLimit,
                                                                      QWidget* parent)
{
    return new CPColorMapView(frame, saturationUpperLimit, parent);
}

void CPColorMapView::setColor(const UIColor& color)
{
    hsv_ = HSVColorFromUIColorKeepingHue(color, hsv_);
    color_ = UIColorFromHSVColor(hsv_);
    colorChanged();
}

void CPColorMapView::setBrightness(double brightness)
{
    if (std::isnan(brightness))
        return;
    brightness_ = clampUnit(brightness);
    // Only the layer's opacity changes; the images stay as they are.
    colorMapLayerOpacity_ = brightness_;
    update();
}

void CPColorMapView::setSaturationUpperLimit(std::optional<double> limit)
{
    saturationUpperLimit_ = validLimit(limit);
    updateColorCursor();
    refreshColorMap();
}

void CPColorMapView::setTileSize(std::optional<double> tileSize)
{
    tileSize_ = validTileSize(tileSize);
    updateColorCursor();
    refreshColorMap();
}

bool CPColorMapView::isAbleToCreateColorMap() const
{
    return window()->isVisible() && width() > 0 && height() > 0 && saturationUpperLimit_ && tileSize_;
}

CPColorMapImageQueue::Request CPColorMapView::currentRequest() const
{
    CPColorMapImageQueue::Request request;
    request.size = {static_cast<double>(width()), static_cast<double>(height())};
    request.tileSize = tileSize_.value_or(0);
    request.saturationUpperLimit = saturationUpperLimit_.value_or(0);
    // The screen is read here, on the interface thread, never by the drawing.
    request.scale = UIScreen::mainScreen().scale();
    request.displayRatio = devicePixelRatioF();
    return request;
}

void CPColorMapView::createColorMapLayer()
{
    if (!isAbleToCreateColorMap())
        return;
    CPColorMapImageQueue::Request request = currentRequest();
    if (hasImages_ && madeRequest_ == request)
        return;
    imageQueue_.request(request);
}

void CPColorMapView::refreshColorMap()
{
    bool able = isAbleToCreateColorMap();
    imageQueue_.setSuspended(!able);
    if (able)
        createColorMapLayer();
}

void CPColorMapView::imagesReady(CPColorMapImageQueue::Result result)
{
    if (!isAbleToCreateColorMap() || !(result.request == currentRequest())) {
        // Made for a size or setting this map no longer has.
        refreshColorMap();
        return;
    }
    colorMapImage_ = std::move(result.colorMapImage);
    backgroundImage_ = std::move(result.backgroundImage);
    colorMapPicture_ = result.colorMapPicture.isNull() ? QPixmap() : QPixmap::fromImage(std::move(result.colorMapPicture));
    backgroundPicture_ =
        result.backgroundPicture.isNull() ? QPixmap() : QPixmap::fromImage(std::move(result.backgroundPicture));
    madeRequest_ = result.request;
    hasImages_ = true;
    update();
    emit colorMapImageChanged();
}

std::optional<CPColorMapView::Tile> CPColorMapView::tileForColor() const
{
    if (!tileSize_ || !saturationUpperLimit_)
        return std::nullopt;
    CPColorMapImages::Grid grid = CPColorMapImages::gridForSize({double(width()), double(height())}, *tileSize_);
    if (grid.isEmpty())
        return std::nullopt;
    // The inverse of the touch rule; hue wraps, since hue 1 is the red of column 0.
    Tile tile;
    tile.column = static_cast<int>(std::lround(clampUnit(hsv_.hue) * grid.columns)) % grid.columns;
    double limit = *saturationUpperLimit_;
    if (limit > 0 && grid.rows > 1) {
        double row = (1 - clampUnit(hsv_.saturation)) / limit * (grid.rows - 1);
        tile.row = static_cast<int>(std::clamp<long>(std::lround(row), 0, grid.rows - 1));
    }
    return tile;
}

void CPColorMapView::hostColorCursor()
{
    if (!colorCursor_)
        return;
    QWidget* host = parentWidget() ? parentWidget() : this;
    if (colorCursor_->parentWidget() != host)
        colorCursor_->setParent(host);
    colorCursor_->raise();
    updateColorCursor();
}

void CPColorMapView::updateColorCursor()
{
    if (!colorCursor_)
        return;
    colorCursor_->setColor(color_);
    colorCursor_->setGrayCursor(hsv_.saturation < 0.2f && hsv_.brightness > 0.8f);
    bool hosted = colorCursor_->parentWidget() == this;
    colorCursor_->setCoordinateOrigin(hosted ? QPoint() : pos());
    std::optional<Tile> tile = tileForColor();
    if (tile) {
        double t = *tileSize_;
        colorCursor_->setTranslation({(tile->column + 0.5) * t, (tile->row + 0.5) * t});
    }
    // Hosted by the map, the cursor hides with it; beside it, it has to be told.
    colorCursor_->setVisible(tile && (hosted || !isHidden()));
}

void CPColorMapView::colorChanged()
{
    updateColorCursor();
    setAccessibleValue(this, accessibleValueText());
}

void CPColorMapView::update(CGPoint point)
{
    double width = this->width();
    double height = this->height();
    // The line just under the map still counts, so that a finger at the bottom edge reaches
    // the bottom row. Written so that NaN fails every test.
    if (!(point.x >= 0 && point.x < width && point.y >= 0 && point.y < height + 1))
        return;
    if (!tileSize_ || !saturationUpperLimit_)
        return;
    double t = *tileSize_;
    CPColorMapImages::Grid grid = CPColorMapImages::gridForSize({width, height}, t);
    if (grid.isEmpty())
        return;
    // Past the last whole tile (the part of the view the image does not reach, and the line
    // under it) is the last tile.
    int column = std::min(static_cast<int>(std::floor(point.x / t)), grid.columns - 1);
    int row = std::min(static_cast<int>(std::floor(point.y / t)), grid.rows - 1);

    HSVColor hsv;
    hsv.hue = static_cast<float>(static_cast<double>(column) / grid.columns);
    double washed = grid.rows > 1 ? static_cast<double>(row) / (grid.rows - 1) : 0;
    hsv.saturation = static_cast<float>(clampUnit(1 - washed * *saturationUpperLimit_));
    hsv.brightness = static_cast<float>(brightness_);
    hsv.alpha = 1;
    hsv_ = hsv;
    color_ = UIColorFromHSVColor(hsv_);
    colorChanged();
    emit valueChanged();
}

void CPColorMapView::moveColorCursorByTiles(int columns, int rows)
{
    std::optional<Tile> tile = tileForColor();
    if (!tile)
        return;
    CPColorMapImages::Grid grid = CPColorMapImages::gridForSize({double(width()), double(height())}, *tileSize_);
    int column = static_cast<int>(std::clamp<long>(long{tile->column} + columns, 0, grid.columns - 1));
    int row = static_cast<int>(std::clamp<long>(long{tile->row} + rows, 0, grid.rows - 1));
    double t = *tileSize_;
    update(CGPoint{(column + 0.5) * t, (row + 0.5) * t});
}

void CPColorMapView::handleTap(CGPoint location)
{
    update(location);
}

void CPColorMapView::handlePan(CGPoint location, Qt::GestureState state)
{
    bool ending = state == Qt::GestureFinished || state == Qt::GestureCanceled;
    // The end of a drag where the last step already was adds nothing.
    if (!ending || location != lastPoint_)
        update(location);
    lastPoint_ = location;
}

QString CPColorMapView::accessibleValueText() const
{
    long degrees = std::lround(clampUnit(hsv_.hue) * 360) % 360;
    long saturation = std::lround(clampUnit(hsv_.saturation) * 100);
    return QStringLiteral("Hue %1 degrees, saturation %2 %").arg(degrees).arg(saturation);
}

bool CPColorMapView::event(QEvent* event)
{
    bool handled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::ParentChange:
        hostColorCursor();
        refreshColorMap();
        break;
    case QEvent::ScreenChangeInternal:
        refreshColorMap();
        break;
    case QEvent::Move:
    case QEvent::Hide:
        updateColorCursor();
        break;
    case QEvent::ZOrderChange:
        // A map raised over its cursor would hide it.
        if (colorCursor_ && colorCursor_->parentWidget() != this)
            colorCursor_->raise();
        break;
    default:
        break;
    }
    return handled;
}

void CPColorMapView::paintEvent(QPaintEvent*)
{
    if (!hasImages_)
        return;
    QPainter painter(this);
    if (!backgroundPicture_.isNull())
        painter.drawPixmap(QPointF(0, 0), backgroundPicture_);
    if (!colorMapPicture_.isNull() && colorMapLayerOpacity_ > 0) {
        painter.setOpacity(colorMapLayerOpacity_);
        painter.drawPixmap(QPointF(0, 0), colorMapPicture_);
    }
}

void CPColorMapView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateColorCursor();
    refreshColorMap();
}

void CPColorMapView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateColorCursor();
    refreshColorMap();
}

void CPColorMapView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    tracking_ = true;
    if (colorCursor_)
        colorCursor_->setEditing(true);
    lastPoint_ = pointOf(event);
    handleTap(lastPoint_);
    event->accept();
}

void CPColorMapView::mouseMoveEvent(QMouseEvent* event)
{
    if (!tracking_)
        return QWidget::mouseMoveEvent(event);
    handlePan(pointOf(event), Qt::GestureUpdated);
    event->accept();
}

void CPColorMapView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!tracking_ || event->button() != Qt::LeftButton)
        return QWidget::mouseReleaseEvent(event);
    tracking_ = false;
    handlePan(pointOf(event), Qt::GestureFinished);
    if (colorCursor_)
        colorCursor_->setEditing(false);
    event->accept();
    emit editingFinished();
}
