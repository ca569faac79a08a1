#pragma once

#include "CPColorCursor.h"
#include "CPColorMapImageQueue.h"
#include "HSVColor.h"

#include "platform/core/CGGeometry.h"
#include "platform/core/UIColor.h"
#include "platform/core/UIImage.h"

#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <optional>

// The colour map: hue across, saturation down, in square tiles. Brightness is not drawn into
// the map: the map lies over a black background and shows brightness as its own opacity, so a
// change of brightness never redraws it. The map's images are drawn on a queue of the view's own,
// away from the interface thread, once the view can have a map (see isAbleToCreateColorMap) and
// again whenever its size, tile size or saturation limit changes.
class CPColorMapView : public QWidget {
    Q_OBJECT

public:
    explicit CPColorMapView(QWidget* parent = nullptr);
    CPColorMapView(CGRect frame, std::optional<double> saturationUpperLimit, QWidget* parent = nullptr);
    ~CPColorMapView() override;

    // The images for a size in points, at the main screen's scale (interface thread only). Nil
    // when the size holds less than one tile.
    static UIImage colorMapImageWithSizeTileSizeSaturationUpperLimit(CGSize size, double tileSize,
                                                                    double saturationUpperLimit);
    static UIImage backgroundImageWithSizeTileSize(CGSize size, double tileSize);
    // New maps; neither sets a tile size, so neither draws until one is given.
    static CPColorMapView* colorMapWithFrame(CGRect frame, QWidget* parent = nullptr);
    static CPColorMapView* colorMapWithFrameSaturationUpperLimit(CGRect frame, double saturationUpperLimit,
                                                                 QWidget* parent = nullptr);

    const UIColor& color() const { return color_; }
    void setColor(const UIColor& color);
    // The colour's hue and saturation as the map places them (a grey keeps the hue it had).
    const HSVColor& hsvColor() const { return hsv_; }
    double brightness() const { return brightness_; }
    void setBrightness(double brightness);
    // How far the bottom row is washed out towards white, 0..1; nothing until set.
    std::optional<double> saturationUpperLimit() const { return saturationUpperLimit_; }
    void setSaturationUpperLimit(std::optional<double> limit);
    // The side of a tile in points, above 0; nothing until set.
    std::optional<double> tileSize() const { return tileSize_; }
    void setTileSize(std::optional<double> tileSize);

    const UIImage& colorMapImage() const { return colorMapImage_; }
    const UIImage& backgroundImage() const { return backgroundImage_; }
    // The map layer's opacity over the black background: the brightness.
    double colorMapLayerOpacity() const { return colorMapLayerOpacity_; }
    // Lives in the map's parent when it has one, so that at the top and bottom rows it can reach
    // past the map's edges; it goes with the map.
    CPColorCursor* colorCursor() const { return colorCursor_.data(); }

    // In a shown window, not empty, with a tile size and a saturation limit.
    bool isAbleToCreateColorMap() const;
    // Asks the image queue for the map and background images when those for the current size,
    // tile size and limit do not exist yet.
    void createColorMapLayer();
    bool isImageQueueSuspended() const { return imageQueue_.isSuspended(); }
    // Images being drawn or waiting to be drawn.
    bool isMakingColorMap() const { return imageQueue_.isBusy(); }

    void handleTap(CGPoint location);
    void handlePan(CGPoint location, Qt::GestureState state);
    // A touch at a point in the map's own coordinates: picks the tile's colour at the map's
    // brightness, moves the cursor and sends valueChanged. Points outside the map, and below
    // the line just under it, are ignored.
    void update(CGPoint point);
    using QWidget::update;
    void updateColorCursor();
    // Moves the cursor by whole tiles (the keyboard's arrows), stopping at the map's edges,
    // and picks that tile as a touch would.
    void moveColorCursorByTiles(int columns, int rows);

    // "Hue 210 degrees, saturation 40 %".
    QString accessibleValueText() const;

signals:
    void valueChanged();
    // A drag (or click) on the map ended.
    void editingFinished();
    // New map images are shown.
    void colorMapImageChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Tile {
        int column = 0;
        int row = 0;
    };
    void refreshColorMap();
    CPColorMapImageQueue::Request currentRequest() const;
    void imagesReady(CPColorMapImageQueue::Result result);
    std::optional<Tile> tileForColor() const;
    void colorChanged();
    void hostColorCursor();

    UIColor color_ = UIColor::whiteColor();
    HSVColor hsv_{0, 0, 1, 1};
    double brightness_ = 0.5;
    std::optional<double> saturationUpperLimit_;
    std::optional<double> tileSize_;
    UIImage colorMapImage_;
    UIImage backgroundImage_;
    QPixmap colorMapPicture_;
    QPixmap backgroundPicture_;
    bool hasImages_ = false;
    CPColorMapImageQueue::Request madeRequest_;
    double colorMapLayerOpacity_ = 0.5;
    QPointer<CPColorCursor> colorCursor_;
    bool tracking_ = false;
    CGPoint lastPoint_;
    CPColorMapImageQueue imageQueue_;
};
