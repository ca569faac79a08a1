#include "PKTintedListController.h"

#include "PKListControllerProtocol.h"
#include "PKSpecifierParser.h"

#include "platform/core/SystemLog.h"
#include "platform/core/UIImageColored.h"
#include "platform/qt/NSBundle.h"
#include "platform/qt/QtConversions.h"
#include "platform/qt/Social.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UIButton.h"
#include "platform/qt/UIDevice.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UINavigationController.h"
#include "platform/qt/UISwitch.h"
#include "platform/qt/UIView.h"

#include <QLabel>

namespace P = PKListControllerProtocol;

namespace {

constexpr const char* kFallbackShareMessage = "Someone needs to change their [PKTintedListController shareMessage]!";

std::optional<UIColor> colorHook(NSObject& page, const char* selector)
{
    if (!page.respondsToSelector(selector))
        return std::nullopt;
    return page.perform<std::optional<UIColor>>(selector);
}

QLabel* headerLabel(const QString& text, double points, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setFont(fontWithName("HelveticaNeue-Light", points));
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    label->setAttribute(Qt::WA_TranslucentBackground);
    return label;
}

void setLabelColour(QLabel* label, std::optional<UIColor> colour)
{
    if (!colour)
        return;
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, toQColor(*colour));
    label->setPalette(palette);
}

} // namespace

const ObjCClass& PKTintedListController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PKTintedListController>("PKTintedListController", &PSListController::staticClass())
            .method("navigationTitle", &PKTintedListController::navigationTitle)
            .method("localizedString:", &PKTintedListController::localizedString)
            .method("heartWasTouched", &PKTintedListController::heartWasTouched)
            .method("setupHeader", &PKTintedListController::setupHeader)
            .method(P::showHeartImage, &PKTintedListController::showHeartImage)
            .method(P::shiftHeartImage, &PKTintedListController::shiftHeartImage)
            .method(P::heartImageColor, &PKTintedListController::heartImageColor)
            .build();
    return cls;
}

SpecifierList& PKTintedListController::specifiers()
{
    if (hasSpecifiers())
        return _specifiers;
    SpecifierList entries;
    if (respondsToSelector(P::customSpecifiers)) {
        entries = PKSpecifierParser::specifiersFromArrayForTarget(perform<EntryTable>(P::customSpecifiers), this);
        if (respondsToSelector(P::customTitle))
            setTitle(localizedString(perform<std::string>(P::customTitle)));
    } else if (respondsToSelector(P::plistName)) {
        entries = loadSpecifiersFromPlistName(perform<std::string>(P::plistName), this);
    } else {
        throw PKNoSpecifiersError();
    }
    _specifiers = std::move(entries);
    PSListController::specifiers();
    localizedSpecifiersWithSpecifiers(_specifiers);
    return _specifiers;
}

std::string PKTintedListController::navigationTitle()
{
    return bundle().localizedStringForKey(title(), title());
}

SpecifierList& PKTintedListController::localizedSpecifiersWithSpecifiers(SpecifierList& specifiers)
{
    systemLog("localizedSpecifiersWithSpecifiers");
    NSBundle& strings = bundle();
    for (const std::shared_ptr<PSSpecifier>& entry : specifiers) {
        if (!entry->name().empty())
            entry->setName(strings.localizedStringForKey(entry->name(), entry->name()));
        if (const std::string* footer = entry->propertyForKey("footerText").string()) {
            std::string translated = strings.localizedStringForKey(*footer, *footer);
            entry->setProperty(Id(translated), "footerText");
        }
        if (!entry->titles().empty()) {
            auto titles = entry->titleDictionary();
            for (auto& [value, title] : titles)
                title = strings.localizedStringForKey(title, title);
            entry->setTitleDictionary(titles);
        }
    }
    return specifiers;
}

std::string PKTintedListController::localizedString(const std::string& text)
{
    std::string translated = bundle().localizedStringForKey(text, text);
    return translated.empty() ? text : translated;
}

void PKTintedListController::loadView()
{
    PSListController::loadView();
    if (perform<bool>(P::showHeartImage)) {
        UIImage heart = NSBundle::bundleForClass(PKTintedListController::staticClass()).imageNamed("heart.png");
        if (respondsToSelector(P::heartImageColor))
            heart = changeImageColor(heart, perform<UIColor>(P::heartImageColor));
        auto* button = new UIButton(QString(), this);
        button->setBackgroundImage(heart);
        button->resize(button->sizeHint());
        button->setAccessibleName(QStringLiteral("Share"));
        connect(button, &QAbstractButton::clicked, this, [this] { heartWasTouched(); });
        heart_ = button;
        UIBarButtonItem* item = UIBarButtonItem::withCustomView(button, this);
        if (respondsToSelector(P::shiftHeartImage) && perform<bool>(P::shiftHeartImage))
            navigationItem()->setRightBarButtonItems({UIBarButtonItem::fixedSpace(-16, this), item}, false);
        else
            navigationItem()->setRightBarButtonItem(item);
    }
    tintSwitches();
}

void PKTintedListController::tintSwitches()
{
    if (respondsToSelector(P::tintSwitches) && !perform<bool>(P::tintSwitches))
        return;
    // The platform before 9.0 and after differ only in how the appearance is asked for; both
    // attach the colour to switches inside pages of this class.
    std::optional<UIColor> first = colorHook(*this, P::switchOnTintColor);
    if (!first)
        first = colorHook(*this, P::tintColor);
    if (first)
        UISwitch::setAppearanceOnTintColor(isa(), *first);
    std::optional<UIColor> second = colorHook(*this, P::switchTintColor);
    if (!second)
        second = colorHook(*this, P::tintColor);
    if (second)
        UISwitch::setAppearanceOnTintColor(isa(), *second);
}

void PKTintedListController::heartWasTouched()
{
    std::string message = respondsToSelector(P::shareMessage) ? perform<std::string>(P::shareMessage)
                                                               : std::string(kFallbackShareMessage);
    SLComposeViewController::present(SLComposeViewController::SLServiceTypeTwitter, message);
}

void PKTintedListController::applyTint(UIViewController& page)
{
    QWidget* window = UIApplication::sharedApplication().keyWindow();
    UINavigationBar* bar = page.navigationController() ? page.navigationController()->navigationBar() : nullptr;
    std::optional<UIColor> tint = colorHook(page, P::tintColor);
    if (tint) {
        UIView::setTintColor(&page, tint);
        UIView::setTintColor(window, tint);
    }
    if (std::optional<UIColor> navigationTint = colorHook(page, P::navigationTintColor)) {
        UIView::setTintColor(bar, navigationTint);
        UIView::setTintColor(window, navigationTint);
    } else if (tint) {
        UIView::setTintColor(bar, tint);
    }
    if (page.respondsToSelector(P::tintNavigationTitleText) && !page.perform<bool>(P::tintNavigationTitleText))
        return;
    std::optional<UIColor> titleColour = colorHook(page, P::navigationTitleTintColor);
    if (!titleColour)
        titleColour = tint;
    if (titleColour && bar)
        bar->setTitleTextColor(titleColour);
}

void PKTintedListController::removeTint(UIViewController& page)
{
    UIView::setTintColor(UIApplication::sharedApplication().keyWindow(), std::nullopt);
    UIView::setTintColor(&page, std::nullopt);
    if (UINavigationController* navigation = page.navigationController()) {
        UIView::setTintColor(navigation->navigationBar(), std::nullopt);
        navigation->navigationBar()->setTitleTextColor(std::nullopt);
    }
}

void PKTintedListController::viewWillAppear(bool animated)
{
    PSListController::viewWillAppear(animated);
    setupHeader();
    applyTint(*this);
}

void PKTintedListController::viewWillDisappear(bool animated)
{
    PSListController::viewWillDisappear(animated);
    removeTint(*this);
}

void PKTintedListController::setupHeader()
{
    if (!table())
        return;
    QWidget* header = nullptr;
    std::optional<UIColor> textColour = colorHook(*this, P::tintColor);
    if (std::optional<UIColor> headerColour = colorHook(*this, P::headerColor))
        textColour = headerColour;

    if (respondsToSelector(P::headerImage)) {
        header = new QWidget();
        header->setGeometry(0, 0, width(), 100);
        UIImage image = bundle().imageNamed(perform<std::string>(P::headerImage));
        auto* picture = new UIImageView(image, header);
        QSize size = picture->sizeHint();
        header->resize(size);
        picture->setGeometry(picture->x(), 10, size.width(), size.height());
    }
    if (respondsToSelector(P::headerText)) {
        delete header;
        header = new QWidget();
        header->setGeometry(0, 0, width(), 60);
        QLabel* title = headerLabel(QString::fromStdString(localizedString(perform<std::string>(P::headerText))), 48, header);
        title->setGeometry(0, 17, header->width(), header->height() - 10);
        setLabelColour(title, textColour);
        if (respondsToSelector(P::headerSubText)) {
            header->resize(header->width(), header->height() + 35);
            title->setGeometry(title->x(), 10, title->width(), title->height() - 5);
            QLabel* subtitle =
                headerLabel(QString::fromStdString(localizedString(perform<std::string>(P::headerSubText))), 16, header);
            subtitle->setGeometry(header->x(), title->y() + title->height(), header->width(), 20);
            setLabelColour(subtitle, textColour);
        } else {
            title->setGeometry(title->x(), 5, title->width(), title->height());
        }
    }
    if (respondsToSelector(P::headerView)) {
        delete header;
        if (QWidget* own = perform<QWidget*>(P::headerView))
            table()->setTableHeaderView(own);
        return;
    }
    if (header) {
        header->setAttribute(Qt::WA_TranslucentBackground);
        table()->setTableHeaderView(header);
    }
}

UIColor PKTintedListController::heartImageColor()
{
    if (std::optional<UIColor> colour = colorHook(*this, P::navigationTintColor))
        return *colour;
    if (std::optional<UIColor> colour = colorHook(*this, P::tintColor))
        return *colour;
    return UIColor::colorWithRedGreenBlueAlpha(0, 122.0 / 255.0, 1, 1);
}

void PKTintedListController::didRotateFromInterfaceOrientation(UIInterfaceOrientation from)
{
    PSListController::didRotateFromInterfaceOrientation(from);
    setupHeader();
    systemLog("AMPW:SET rotaiing");
}
