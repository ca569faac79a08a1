#pragma once

#include "platform/qt/PSListItemsController.h"

// The choose-one page in the tint of the page that opened it.
class PKListItemsController : public PSListItemsController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
};
