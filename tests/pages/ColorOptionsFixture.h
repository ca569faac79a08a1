#pragma once

#include "pagekit/QtTestSupport.h"

#include "colour/QLColorCell.h"
#include "pages/QLAWSettingsColorOptionsController.h"
#include "store/PreferencesStore.h"
#include "support/TemporaryRoot.h"

#include <gtest/gtest.h>

// The colour options page in a window over a root whose settings file holds the given body.
class ColorOptionsFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        testApplication();
        NSBundle::setPreferredLanguages({"en"});
        UIScreen::mainScreen().setBounds(CGRectMake(0, 0, 390, 844));
    }
    void TearDown() override
    {
        window_.reset();
        NSBundle::setPreferredLanguages({});
    }
    void writePreferences(const std::string& body)
    {
        root_.writeFile("/var/mobile/Library/Preferences/com.mossgate.ampwell.plist",
                        "<plist version=\"1.0\"><dict>" + body + "</dict></plist>");
    }
    void open(const std::string& body)
    {
        writePreferences(body);
        page_ = new QLAWSettingsColorOptionsController();
        window_ = std::make_unique<TestWindow>(page_);
        window_->window()->activateWindow();
        TestWindow::settle();
    }
    std::shared_ptr<PSSpecifier> entryForKey(const std::string& key)
    {
        for (const auto& entry : page_->specifiers())
            if (const std::string* stored = entry->propertyForKey("key").string(); stored && *stored == key)
                return entry;
        return nullptr;
    }
    QLColorCell* colorRow(const std::string& key)
    {
        std::shared_ptr<PSSpecifier> entry = entryForKey(key);
        return entry ? dynamic_cast<QLColorCell*>(page_->cachedCellForSpecifier(entry)) : nullptr;
    }
    // The text stored under the key, or "(none)".
    std::string stored(const std::string& key)
    {
        std::optional<PlistDict> preferences = loadPreferences();
        const PlistValue* value = preferences ? preferences->find(key) : nullptr;
        return value && value->asString() ? *value->asString() : std::string("(none)");
    }

    TemporaryRoot root_;
    QLAWSettingsColorOptionsController* page_ = nullptr;
    std::unique_ptr<TestWindow> window_;
};
