#pragma once

#include "platform/core/CGGeometry.h"
#include "platform/core/UIColor.h"

#include <QWidget>

// The ring that marks the chosen tile on the colour map. It is placed by a translation of its
// centre, so that the exact (fractional) tile centre is kept even though a widget sits on whole
// points. It never takes the mouse: clicks fall through to the map under it.
class CPColorCursor : public QWidget {
    Q_OBJECT

public:
    explicit CPColorCursor(QWidget* parent = nullptr);

    // The cursor's side in points.
    static double cursorSize();
    // A cursor whose centre lies at the point (before any translation).
    static CPColorCursor* colorCursorWithPoint(CGPoint point, QWidget* parent = nullptr);

    const UIColor& color() const { return color_; }
    void setColor(const UIColor& color);
    // While the user drags the cursor it is drawn larger, so it shows past the fingertip.
    bool isEditing() const { return editing_; }
    void setEditing(bool editing);
    // A grey outline for colours so light that a white one would vanish.
    bool isGrayCursor() const { return grayCursor_; }
    void setGrayCursor(bool gray);
    // Drawn while the picker it belongs to has the keyboard focus.
    bool showsFocus() const { return showsFocus_; }
    void setShowsFocus(bool shows);

    CGPoint translation() const { return translation_; }
    void setTranslation(CGPoint translation);
    // Where the centre is now: the start point plus the translation, in the coordinates of the
    // view the cursor marks (the map), which need not be the cursor's parent.
    CGPoint center() const;
    // Where that view's origin lies in the cursor's parent.
    void setCoordinateOrigin(QPoint origin);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    UIColor color_ = UIColor::whiteColor();
    bool editing_ = false;
    bool grayCursor_ = false;
    bool showsFocus_ = false;
    CGPoint start_;
    CGPoint translation_;
    QPoint coordinateOrigin_;
};
