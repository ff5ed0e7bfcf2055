#pragma once

#include "zanbench/hostitem/HostFamily.h"

namespace zan::host {

/// What a user does to the layout of a panel: Menu, Clipboard, Handles, Undo, Redo.
class HostEditing : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// The menu that the last press has opened; Nothing when none is open.
    Ref<binding::Object> Menu();
    /// The clipboard's text.
    QString Clipboard() const;
    void setClipboard(const QString& text);
    /// The resize handles of a control; none for a control without a window.
    Ref<binding::Object> Handles(const Variant& control);
    void Undo();
    void Redo();

    const binding::MemberTable& members() const override;
};

} // namespace zan::host
