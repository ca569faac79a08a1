#include "PKPersonCell.h"

#include "platform/qt/NSBundle.h"
#include "platform/qt/PSListController.h"
#include "platform/qt/UIDevice.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UIView.h"

#include <QLabel>

namespace {

// The frame a new cell has before any table sizes it.
constexpr QRect kInitialFrame(0, 0, 320, 44);

} // namespace

const ObjCClass& PKPersonCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<PKPersonCell>("PKPersonCell", &PSTableCell::staticClass())
                                      .method("personDescription", &PKPersonCell::personDescription)
                                      .method("imageName", &PKPersonCell::imageName)
                                      .method("name", &PKPersonCell::name)
                                      .method("twitterHandle", &PKPersonCell::twitterHandle)
                                      .method("updateImage", &PKPersonCell::updateImage)
                                      .method("localizedString:", &PKPersonCell::localizedString)
                                      .build();
    return cls;
}

PKPersonCell::PKPersonCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier)
    : PSTableCell(style, reuseIdentifier, std::move(specifier))
{
    setGeometry(kInitialFrame);
}

void PKPersonCell::didFinishInitialising()
{
    QRect frame = geometry();
    background_ = new UIImageView(UIImage(), this);
    background_->setGeometry(9, 18, 65, 65);
    updateImage();

    bool pad = UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiomPad;
    label_ = new QLabel(QString::fromStdString(localizedString(name())), this);
    label_->setGeometry(frame.x() + 84, frame.y() + 18, frame.width(), frame.height());
    label_->setAttribute(Qt::WA_TranslucentBackground);
    label_->setFont(pad ? fontWithName("Helvetica Light", 30) : fontWithName("HelveticaNeue", 21));
    label_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    label2_ = new QLabel(QString::fromStdString(localizedString(personDescription())), this);
    label2_->setGeometry(frame.x() + 84, frame.y() + 42, frame.width(), frame.height());
    label2_->setAttribute(Qt::WA_TranslucentBackground);
    label2_->setFont(fontWithName("Helvetica", 13));
    label2_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QPalette palette = label2_->palette();
    palette.setColor(QPalette::WindowText, QColor(115, 115, 115));
    label2_->setPalette(palette);

    for (QWidget* part : {static_cast<QWidget*>(label_), static_cast<QWidget*>(label2_)})
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(label_->text());
    setAccessibleDescription(label2_->text());
}

void PKPersonCell::updateImage()
{
    if (background_)
        background_->setImage(NSBundle::bundleForClass(isa()).imageNamed(imageName()));
}

std::string PKPersonCell::localizedString(const std::string& text)
{
    // Asked of the superview's bundle: a cell not yet in a table has none, and its texts
    // then stand as they are.
    PSListController* page = nullptr;
    for (QWidget* ancestor = parentWidget(); ancestor && !page; ancestor = ancestor->parentWidget())
        page = dynamic_cast<PSListController*>(ancestor);
    if (!page)
        return text;
    std::string translated = page->bundle().localizedStringForKey(text, text);
    return translated.empty() ? text : translated;
}
