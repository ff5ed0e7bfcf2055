#pragma once

#include <QIcon>

namespace zan::dialogs {

/// Small icons of the channel lists, drawn for any scale: a wave for a channel, a struck-out ring for none.
QIcon channelIcon();
QIcon noChannelIcon();

} // namespace zan::dialogs
