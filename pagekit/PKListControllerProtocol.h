#pragma once

// The optional hooks a page implements to customise the tinted list page. Each is a method
// registered under this name in the page class's method table, takes no argument and is
// asked for with respondsToSelector before use; a page that lacks it gets the fallback.
//
//   plistName                 text     entries from a property list (when no customSpecifiers)
//   customSpecifiers          EntryTable the page's entry table
//   customTitle               text     page title (a localisation key)
//   showHeartImage            bool     share button in the navigation bar (base: YES)
//   shiftHeartImage           bool     pull it 16 points toward the edge (base: YES)
//   shareMessage              text     what the share button shares
//   heartImageColor           colour   the share button's colour (base: navigation tint chain)
//   tintNavigationTitleText   bool     tint the bar's title (default: yes)
//   tintSwitches              bool     tint the page's switches (default: yes)
//   tintColor                 colour   general tint
//   navigationTintColor       colour   bar and key window tint
//   navigationTitleTintColor  colour   bar title colour
//   switchTintColor           colour   switches' on-tint (second pass)
//   switchOnTintColor         colour   switches' on-tint (first pass)
//   headerImage               text     picture header's image name
//   headerText                text     large title header (a localisation key)
//   headerSubText             text     its subtitle (a localisation key)
//   headerView                view     a header of the page's own
//   headerColor               colour   header texts' colour
namespace PKListControllerProtocol {

inline constexpr const char* plistName = "plistName";
inline constexpr const char* customSpecifiers = "customSpecifiers";
inline constexpr const char* customTitle = "customTitle";
inline constexpr const char* showHeartImage = "showHeartImage";
inline constexpr const char* shiftHeartImage = "shiftHeartImage";
inline constexpr const char* shareMessage = "shareMessage";
inline constexpr const char* heartImageColor = "heartImageColor";
inline constexpr const char* tintNavigationTitleText = "tintNavigationTitleText";
inline constexpr const char* tintSwitches = "tintSwitches";
inline constexpr const char* tintColor = "tintColor";
inline constexpr const char* navigationTintColor = "navigationTintColor";
inline constexpr const char* navigationTitleTintColor = "navigationTitleTintColor";
inline constexpr const char* switchTintColor = "switchTintColor";
inline constexpr const char* switchOnTintColor = "switchOnTintColor";
inline constexpr const char* headerImage = "headerImage";
inline constexpr const char* headerText = "headerText";
inline constexpr const char* headerSubText = "headerSubText";
inline constexpr const char* headerView = "headerView";
inline constexpr const char* headerColor = "headerColor";

} // namespace PKListControllerProtocol
