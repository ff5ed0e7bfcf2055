#pragma once

#include "keel/KeelText.h"
#include "site/Scheme.h"

namespace zan::keel {

using values::Ref;

/// Number of the run-time error for a file that is no older window.
constexpr int InvalidFileFormat = 321;

/// Reads files of older character-grid windows and gives each as a window record with channels. The record belongs to no
/// scheme yet; a scheme makes it and its channels, so that it can be taken into that scheme.
///
/// Each channel's node holds, as X and Y, its place in characters and lines; nothing for what the file leaves out. A row
/// without an address becomes a channel of address -1: a fixed text.
class KeelWindows
{
public:
    /// Which characters the texts of the channels are made of.
    enum class Texts {
        AsTheyAre,
        ForDosFont, ///< those that a font of the DOS character set shows as the file's
    };

    /// Raises 91 for no store.
    explicit KeelWindows(const Ref<site::SchemeWindows>& store, Texts texts = Texts::AsTheyAre);
    /// Raises 53 for a file that is not there, 75 for one that cannot be read, 321 for one that is no older window (with
    /// its line and column), 91 when the store does not give what it is asked for, and whatever the store raises.
    Ref<site::SchemeWindow> Load(const QString& file);

private:
    void add(site::SchemeWindow& window, const KeelField& field);
    QString shownText(const QString& text) const;

    Ref<site::SchemeWindows> m_store;
    Texts m_texts;
};

/// The rows of a file. Raises like KeelWindows::Load.
std::vector<KeelField> readKeelFile(const QString& file);

/// Names of the elements of a channel's node that hold its place.
inline const values::Name PositionX("X");
inline const values::Name PositionY("Y");

} // namespace zan::keel
