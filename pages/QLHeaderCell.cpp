#include "QLHeaderCell.h"

#include "platform/qt/NSBundle.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UIView.h"

namespace {

QPointer<QLHeaderCell>& headerCellReference()
{
    static QPointer<QLHeaderCell> cell;
    return cell;
}

QPointer<UIImageView>& headerImageView()
{
    static QPointer<UIImageView> view;
    return view;
}

} // namespace

const ObjCClass& QLHeaderCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<QLHeaderCell>("QLHeaderCell", &PSTableCell::staticClass()).build();
    return cls;
}

QLHeaderCell* QLHeaderCell::current()
{
    return headerCellReference();
}

UIImageView* QLHeaderCell::sharedImageView()
{
    return headerImageView();
}

void QLHeaderCell::didMoveToSuperview()
{
    PSTableCell::didMoveToSuperview();
    const std::string* name = specifier() ? specifier()->propertyForKey("ampwellHeader").string() : nullptr;
    if (!name)
        return;
    // Framework versions before and after the trait-collection lookup find the same picture here.
    UIImage image = NSBundle::bundleForClass(isa()).imageNamed(*name);
    auto* view = new UIImageView(image, contentView());
    headerImageView() = view;
    view->setGeometry(rect());
    view->setContentMode(UIImageView::ContentMode::ScaleAspectFill);
    view->show();
    UIView::setMasksToBounds(this, true);
    headerCellReference() = this;
    setFocusPolicy(Qt::NoFocus);
}

void QLHeaderCell::layoutSubviews()
{
    PSTableCell::layoutSubviews();
    if (UIImageView* view = headerImageView(); view && view->parentWidget() == contentView())
        view->setGeometry(rect());
}
