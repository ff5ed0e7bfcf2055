#pragma once

#include "dialogs/SetupForm.h"

/// The odd steps of frmChannel.
///
/// COMPAT: three rules join a row of the list and a channel of the window, and do not agree. A row that is clicked shows
/// the channel two further than its index (from 0) in the window (from 1), what is typed is written to that one; applying
/// binds the channel one further; and opening selects the row one less than the bound channel's index.
namespace zan::dialogs::channelform {

std::unique_ptr<FormState> makeState();

// When the form is made.
void fillLists(SetupForm& form);

// Filling.
void takeForeColour(SetupForm& form);
void takeBackColour(SetupForm& form);
void rememberFontName(SetupForm& form);
void fillBindings(SetupForm& form);
void selectBinding(SetupForm& form);
void takeCaption(SetupForm& form);
/// Shows the value of the channel whose parameters are shown, as it comes; writes nothing anywhere.
void followValue(SetupForm& form);
void showExample(SetupForm& form);

// What a user does.
void bindClicked(SetupForm& form, Field& field);
void channelClicked(SetupForm& form, Field& field);
/// The parameters of a channel are written as they are typed: Cancel takes none of it back.
void writeChannel(SetupForm& form, Field& field);
void dataTypeClicked(SetupForm& form, Field& field);
void addChannel(SetupForm& form, Field& field);
void ecanClicked(SetupForm& form, Field& field);
void dosCharsetClicked(SetupForm& form, Field& field);

// Applying.
void applyBackColour(SetupForm& form);
void applyForeColour(SetupForm& form);
void releaseBinding(SetupForm& form);
void bind(SetupForm& form);

} // namespace zan::dialogs::channelform
