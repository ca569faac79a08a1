#pragma once

#include "pagekit/PKPersonCell.h"

// The maker's row on the credits page, with the social network's mark at its right.
class QLDeveloperCell : public PKPersonCell {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    using PKPersonCell::PKPersonCell;

    std::string personDescription() override { return "isDeveloper && isDesigner // == YES"; }
    std::string name() override { return "Mossgate"; }
    std::string twitterHandle() override { return "mossgate"; }
    std::string imageName() override { return "MossgateLarge.png"; }
    void didMoveToSuperview() override;
};
