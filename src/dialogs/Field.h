#pragma once

#include "dialogs/FormDescription.h"
#include "surface/host/Picture.h"
#include "surface/text/FontObject.h"
#include "values/Colour.h"

#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace zan::dialogs {

using values::Ref;

/// One row of a list. Lists of channels have its key, the window it belongs to, and an icon.
struct ListRow
{
    QString text;
    QString key;    ///< the bind string; empty for none
    QString parent; ///< the window's key, shown beside the text; of a plain list only what a filter finds too
};

/// What a field of a form holds at this moment. Only the form changes it, and tells whoever shows it.
class Field
{
public:
    explicit Field(const FieldRow& row);

    const FieldRow& row() const noexcept { return *m_row; }
    QString name() const { return m_row->name.toString(); }
    FieldKind kind() const noexcept { return m_row->kind; }
    QString caption() const { return m_caption; }
    QString toolTip() const { return m_row->toolTip.toString(); }
    /// What is typed in it; of a list the text of the chosen row; of anything else its caption.
    QString text() const;
    int value() const noexcept { return m_value; } ///< of a box; of an option 1 or 0
    bool isChecked() const noexcept { return m_value == 1; }
    bool isEnabled() const noexcept { return m_isEnabled; }
    bool isVisible() const noexcept { return m_isVisible; }
    int rank() const noexcept { return m_rank; } ///< among frames on one spot the higher lies in front
    const std::vector<ListRow>& rows() const noexcept { return m_rows; }
    int listIndex() const noexcept { return m_listIndex; } ///< from 0; -1 for none
    const ListRow* selectedRow() const noexcept;
    std::optional<values::Colour> backColour() const noexcept { return m_backColour; }
    std::optional<values::Colour> foreColour() const noexcept { return m_foreColour; }
    const Ref<surface::FontObject>& font() const noexcept { return m_font; }
    const Ref<surface::Picture>& picture() const noexcept { return m_picture; }
    int height() const noexcept { return m_height; } ///< twips; 0 for what the field needs
    bool isList() const noexcept;
    bool isText() const noexcept;

private:
    friend class SetupForm;

    const FieldRow* m_row;
    QString m_caption;
    QString m_text;
    int m_value = 0;
    bool m_isEnabled;
    bool m_isVisible;
    int m_rank = 0;
    int m_listIndex = -1;
    int m_height = 0;
    std::vector<ListRow> m_rows;
    QSet<QString> m_keys; ///< of the rows, case folded
    std::optional<values::Colour> m_backColour;
    std::optional<values::Colour> m_foreColour;
    Ref<surface::FontObject> m_font;
    Ref<surface::Picture> m_picture;
};

} // namespace zan::dialogs
