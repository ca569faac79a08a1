#include "UIView.h"

#include "QtConversions.h"

#include <QVariant>

#include <cmath>

// Kept exactly as given: a round trip through QColor would round the channels.
Q_DECLARE_METATYPE(UIColor)

namespace {

constexpr const char* kTint = "ampwellTintColor";
constexpr const char* kCornerRadius = "ampwellCornerRadius";
constexpr const char* kMasksToBounds = "ampwellMasksToBounds";
constexpr const char* kTag = "ampwellTag";

void repaintTree(QWidget* view)
{
    view->update();
    for (QWidget* child : view->findChildren<QWidget*>())
        child->update();
}

} // namespace

namespace UIView {

std::optional<UIColor> tintColor(const QWidget* view)
{
    QVariant value = view ? view->property(kTint) : QVariant();
    if (!value.isValid())
        return std::nullopt;
    return value.value<UIColor>();
}

void setTintColor(QWidget* view, std::optional<UIColor> color)
{
    if (!view)
        return;
    view->setProperty(kTint, color ? QVariant::fromValue(*color) : QVariant());
    repaintTree(view);
}

UIColor effectiveTintColor(const QWidget* view)
{
    for (const QWidget* current = view; current; current = current->parentWidget())
        if (std::optional<UIColor> color = tintColor(current))
            return *color;
    return systemBlueColor();
}

UIColor systemBlueColor()
{
    return UIColor::colorWithRedGreenBlueAlpha(0, 122.0 / 255.0, 1, 1);
}

double cornerRadius(const QWidget* view)
{
    return view ? view->property(kCornerRadius).toDouble() : 0;
}

void setCornerRadius(QWidget* view, double radius)
{
    if (!view || !std::isfinite(radius))
        return;
    view->setProperty(kCornerRadius, std::max(radius, 0.0));
    repaintTree(view);
}

bool masksToBounds(const QWidget* view)
{
    return view && view->property(kMasksToBounds).toBool();
}

void setMasksToBounds(QWidget* view, bool masks)
{
    if (!view)
        return;
    view->setProperty(kMasksToBounds, masks);
    repaintTree(view);
}

int tag(const QWidget* view)
{
    return view ? view->property(kTag).toInt() : 0;
}

void setTag(QWidget* view, int tag)
{
    if (view)
        view->setProperty(kTag, tag);
}

QWidget* viewWithTag(QWidget* view, int tag)
{
    if (!view || tag == 0)
        return nullptr;
    if (UIView::tag(view) == tag)
        return view;
    for (QObject* child : view->children())
        if (auto* subview = qobject_cast<QWidget*>(child))
            if (QWidget* found = viewWithTag(subview, tag))
                return found;
    return nullptr;
}

} // namespace UIView

QFont systemFont(double points, QFont::Weight weight)
{
    QFont font(QStringLiteral("Inter"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(points))));
    font.setWeight(weight);
    return font;
}

QFont fontWithName(std::string_view name, double points)
{
    QFont::Weight weight = QFont::Normal;
    if (name.ends_with("-Light") || name.ends_with(" Light"))
        weight = QFont::Light;
    else if (name.ends_with("-UltraLight") || name.ends_with("-Thin"))
        weight = QFont::ExtraLight;
    else if (name.ends_with("-Medium"))
        weight = QFont::Medium;
    else if (name.ends_with("-Bold") || name.ends_with(" Bold"))
        weight = QFont::Bold;
    return systemFont(points, weight);
}
