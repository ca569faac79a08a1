#pragma once

#include "platform/qt/PSTableCell.h"

class QLabel;
class UIButton;
class UIImageView;

// A person as a large row: picture, name and a line under it. Subclasses supply the texts.
class PKPersonCell : public PSTableCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    PKPersonCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier);

    virtual std::string personDescription() { return {}; }
    virtual std::string imageName() { return {}; }
    virtual std::string name() { return {}; }
    virtual std::string twitterHandle() { return {}; }

    void updateImage();
    std::string localizedString(const std::string& text);

    UIImageView* background() const { return background_; }
    QLabel* label() const { return label_; }
    QLabel* label2() const { return label2_; }

    void didFinishInitialising() override;

private:
    UIImageView* background_ = nullptr;
    QLabel* label_ = nullptr;
    QLabel* label2_ = nullptr;
    UIButton* twitterButton_ = nullptr;
};
