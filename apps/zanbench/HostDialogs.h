#pragma once

#include <QString>

namespace zan::host {

/// What the host asks its user and tells him. An interface, so that a test can answer.
class HostDialogs
{
public:
    enum class Unsaved { Save, Discard, Cancel };
    enum class Conflict { Overwrite, SaveAs, Cancel };

    enum class Edits { Restore, Discard, Later };

    virtual ~HostDialogs() = default;
    /// The scheme of this name has changes that would be lost.
    virtual Unsaved askUnsaved(const QString& name) = 0;
    /// Saving was refused because somebody else has changed the file; the text says what is known.
    virtual Conflict askConflict(const QString& text) = 0;
    /// Edits of a scheme were found that a program has kept and not saved before it ended; the text says whose and of
    /// when, and the detail what restoring them means.
    virtual Edits askEdits(const QString& text, const QString& detail) = 0;
    /// A scheme file to open, beginning in a folder; empty when the user turns away.
    virtual QString chooseScheme(const QString& folder) = 0;
    /// A file for a new scheme, beginning in a folder; empty when the user turns away. Asks before an existing file
    /// is taken.
    virtual QString chooseNew(const QString& folder) = 0;
    /// A file to save under; empty when the user turns away. Asks before an existing file is taken.
    virtual QString chooseTarget(const QString& file) = 0;
    /// A window of an older terminal to import, beginning in a folder; empty when the user turns away.
    virtual QString chooseOlderWindow(const QString& folder) = 0;
    /// Something that is there would be replaced, and cannot be had back; the text says what. False when the user turns
    /// away.
    virtual bool askReplace(const QString& text) = 0;
    virtual void showError(const QString& text) = 0;
    virtual void showAbout(const QString& text) = 0;
};

} // namespace zan::host
