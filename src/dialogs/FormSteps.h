#pragma once

#include "dialogs/SetupForm.h"
#include "document/Elements.h"

/// The steps and rows that setup forms share.
namespace zan::dialogs {

// Buttons below the tabs.
void pressOk(SetupForm& form, Field& button);
void pressCancel(SetupForm& form, Field& button);
void pressApply(SetupForm& form, Field& button);

inline constexpr FieldRow okButton{
    .name = u"cmdOK", .kind = FieldKind::Button, .caption = u"&OK", .tab = BelowTabs, .click = pressOk};
inline constexpr FieldRow cancelButton{
    .name = u"cmdCancel", .kind = FieldKind::Button, .caption = u"&Cancel", .tab = BelowTabs, .click = pressCancel};
inline constexpr FieldRow applyButton{
    .name = u"cmdApply", .kind = FieldKind::Button, .caption = u"&Apply", .tab = BelowTabs, .click = pressApply};

// Pickers. Whatever fails in them, cancelling included, ends the handler quietly.
inline constexpr QStringView FontButtonTip = u"Select a new font";
inline constexpr QStringView ForeColourButtonTip = u"Select a new text colour";
inline constexpr QStringView BackColourButtonTip = u"Select a new background colour";
void pickFont(SetupForm& form, Field& button);
void pickForeColour(SetupForm& form, Field& button);
void pickBackColour(SetupForm& form, Field& button);
/// The colour of the swatch itself.
void pickSwatchColour(SetupForm& form, Field& swatch);

// The font.
/// Takes the control's font, and a copy of it to be edited.
void takeFont(SetupForm& form);
/// On the format tab.
inline constexpr FieldRow fontButton{.name = u"cmdFont",
                                     .kind = FieldKind::Button,
                                     .caption = u"F&ont",
                                     .toolTip = FontButtonTip,
                                     .tab = 1,
                                     .click = pickFont};
/// Gives the control the edited font when it differs; the control follows the window's font no longer.
void applyFont(SetupForm& form);

// The channel list.
inline constexpr QStringView ChannelListName = u"lvChannels";
inline constexpr FieldRow channelFilter{.name = u"txtFilter",
                                        .kind = FieldKind::Filter,
                                        .toolTip = u"Show only channels whose label, key or window contains this"};
/// Fills every channel list of the form with "None" and each channel of the scheme.
void fillChannelList(SetupForm& form);
void selectBoundChannel(SetupForm& form);
/// Binds the control to the channel of the selected row, or to none.
void bindSelectedChannel(SetupForm& form);

/// The channel has one binding more, or one less. Raises 6 where the count has no room left.
void countUse(SetupForm& form, site::Channel& channel, int by);

/// Makes the ACTION of the control's node where there is none.
void ensureAction(SetupForm& form);

// The tool tip, on the format tab.
inline constexpr QStringView TooltipName = u"txtTooltip";
inline constexpr FieldRow tooltipField{
    .name = TooltipName,
    .kind = FieldKind::Text,
    .caption = u"Tooltip Text",
    .toolTip = u"Enter the text to appear when the user holds the mouse pointer over the channel",
    .tab = 1,
    .at = At::Wrapper,
    .value = &document::element::ToolTipText};

/// Names of the data types, in the order of their indices.
void fillDataTypes(SetupForm& form, Field& list);

} // namespace zan::dialogs
