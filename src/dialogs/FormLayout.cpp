#include "dialogs/FormLayout.h"

#include "values/Twips.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QTabWidget>

#include <map>
#include <utility>

namespace zan::dialogs {

namespace {

constexpr int Gap = 6;
constexpr int Narrow = 4;

/// Lays the fields of one container out in lines: captions in a column of their own, so that they and what they stand
/// before are aligned.
class Lines
{
public:
    explicit Lines(QGridLayout& grid)
        : m_grid(grid)
    {
        m_grid.setHorizontalSpacing(Gap);
        m_grid.setVerticalSpacing(Narrow);
        m_grid.setColumnStretch(1, 1);
    }

    void add(FieldWidget& field)
    {
        if (field.field().kind() == FieldKind::Caption) {
            m_caption = &field;
            return;
        }
        if (field.field().row().beside && m_line)
            return addBeside(field);
        if (field.isTall())
            addTall(field);
        else
            addLine(field);
    }
    /// A widget over the whole width, as high as it likes.
    void addWide(QWidget* widget) { m_grid.addWidget(widget, m_next++, 0, 1, 2); }
    void addWhole(QWidget* widget)
    {
        m_grid.addWidget(widget, m_next, 0, 1, 2);
        m_grid.setRowStretch(m_next++, 1);
        m_isFilled = true;
    }
    /// A line above the list that comes next.
    void keep(FieldWidget& filter) { m_filter = &filter; }
    void finish()
    {
        if (!m_isFilled)
            m_grid.setRowStretch(m_next, 1);
    }

private:
    static bool isWide(const FieldWidget& field)
    {
        switch (field.field().kind()) {
        case FieldKind::Button:
        case FieldKind::CheckBox:
        case FieldKind::Option:
        case FieldKind::Swatch:
            return false;
        default:
            return true;
        }
    }
    void addBeside(FieldWidget& field)
    {
        // The room that short fields leave stays at the end of the line.
        const int end = m_line->count() - (m_line->itemAt(m_line->count() - 1)->spacerItem() ? 1 : 0);
        m_line->insertWidget(end, field.widget(), isWide(field) ? 1 : 0);
        if (field.label())
            m_line->insertWidget(end, field.label());
    }
    /// What stands before a field: its own label, or the caption in front of it, which takes its place.
    QWidget* takeLabel(FieldWidget& field)
    {
        if (!m_caption)
            return field.label();
        delete field.label();
        auto* label = qobject_cast<QLabel*>(std::exchange(m_caption, nullptr)->widget());
        label->setBuddy(field.widget());
        return label;
    }
    /// One field with what stands beside it.
    void addLine(FieldWidget& field)
    {
        m_line = new QHBoxLayout;
        m_line->setSpacing(Gap);
        m_line->addWidget(field.widget(), isWide(field) ? 1 : 0);
        if (!isWide(field))
            m_line->addStretch(1);
        QWidget* label = takeLabel(field);
        if (label)
            m_grid.addWidget(label, m_next, 0);
        m_grid.addLayout(m_line, m_next++, label ? 1 : 0, 1, label ? 1 : 2);
    }
    /// What takes the room there is: its caption above it, then its filter.
    void addTall(FieldWidget& field)
    {
        m_line = nullptr;
        if (field.label())
            m_grid.addWidget(field.label(), m_next++, 0, 1, 2);
        if (m_filter)
            m_grid.addWidget(m_filter->widget(), m_next++, 0, 1, 2);
        m_filter = nullptr;
        addWhole(field.widget());
    }

    QGridLayout& m_grid;
    QHBoxLayout* m_line = nullptr;
    FieldWidget* m_filter = nullptr;
    FieldWidget* m_caption = nullptr;
    int m_next = 0;
    bool m_isFilled = false;
};

class Builder
{
public:
    Builder(SetupForm& form, QDialog& dialog)
        : m_form(form)
        , m_dialog(dialog)
    {}

    LaidOutForm build()
    {
        auto* layout = new QVBoxLayout(&m_dialog);
        layout->setContentsMargins(Gap, Gap, Gap, Gap);
        layout->setSpacing(Gap);
        m_result.widgets.resize(m_form.fields().size());
        if (m_form.description().tabs.empty())
            layout->addLayout(columns(m_dialog, 0, {}), 1);
        else
            layout->addWidget(buildTabs(), 1);
        layout->addLayout(buttons());
        return std::move(m_result);
    }

private:
    QTabWidget* buildTabs()
    {
        m_result.tabs = new QTabWidget(&m_dialog);
        int tab = 0;
        for (const QStringView caption : m_form.description().tabs) {
            auto* page = new QWidget(m_result.tabs);
            auto* layout = columns(*page, tab++, {});
            layout->setContentsMargins(Gap, Gap, Gap, Gap);
            page->setLayout(layout);
            m_result.tabs->addTab(page, caption.toString());
        }
        return m_result.tabs;
    }

    QHBoxLayout* buttons()
    {
        auto* layout = new QHBoxLayout;
        layout->setSpacing(Gap);
        layout->addStretch(1);
        const QSize size(values::twipsToPixels(m_form.description().buttonWidth), values::twipsToPixels(375));
        for (std::size_t place = 0; place < m_form.fields().size(); ++place) {
            if (m_form.fields()[place].row().tab != BelowTabs)
                continue;
            QWidget* button = make(place, m_dialog).widget();
            button->setFixedSize(size.expandedTo(button->minimumSizeHint()));
            layout->addWidget(button);
        }
        return layout;
    }

    FieldWidget& make(std::size_t place, QWidget& parent)
    {
        m_result.widgets[place] = makeFieldWidget(m_form, m_form.fields()[place], &parent);
        m_result.widgets[place]->refresh();
        return *m_result.widgets[place];
    }

    /// Everything that stands on a tab, or in a frame of it.
    QHBoxLayout* columns(QWidget& parent, int tab, QStringView frame)
    {
        auto* layout = new QHBoxLayout;
        layout->setSpacing(Gap);
        std::map<int, Lines> lines;
        std::map<int, QStackedWidget*> spots;
        for (std::size_t place = 0; place < m_form.fields().size(); ++place) {
            const FieldRow& row = m_form.fields()[place].row();
            if (row.tab != tab || row.frame != frame)
                continue;
            auto column = lines.find(row.column);
            if (column == lines.end()) {
                auto* grid = new QGridLayout;
                layout->addLayout(grid, row.column == 0 ? 2 : 3);
                column = lines.emplace(row.column, Lines(*grid)).first;
            }
            addField(place, parent, column->second, spots);
        }
        for (auto& [column, grid] : lines)
            grid.finish();
        return layout;
    }

    /// Whether a frame on the same spot as this one holds something that takes what room there is.
    bool isTallSpot(const FieldRow& frame)
    {
        for (const Field& field : m_form.fields()) {
            const Field* around = field.row().frame.isEmpty() ? nullptr : m_form.find(field.row().frame);
            if (!around || around->row().tab != frame.tab || around->row().spot != frame.spot)
                continue;
            switch (field.kind()) {
            case FieldKind::ListBox:
            case FieldKind::ChannelList:
            case FieldKind::MultilineText:
            case FieldKind::Picture:
                return true;
            default:
                break;
            }
        }
        return false;
    }

    void addField(std::size_t place, QWidget& parent, Lines& lines, std::map<int, QStackedWidget*>& spots)
    {
        const FieldRow& row = m_form.fields()[place].row();
        if (row.kind != FieldKind::Frame) {
            FieldWidget& field = make(place, parent);
            if (row.kind == FieldKind::Filter)
                lines.keep(field);
            else
                lines.add(field);
            return;
        }
        QStackedWidget*& spot = spots[row.spot];
        if (row.spot > 0 && !spot) {
            spot = new QStackedWidget(&parent);
            spot->addWidget(new QWidget(spot)); // nothing, while none of its frames is to be seen
            if (isTallSpot(row))
                lines.addWhole(spot);
            else
                lines.addWide(spot);
        }
        FieldWidget& frame = make(place, row.spot > 0 ? *spot : parent);
        QHBoxLayout* content = columns(*frame.widget(), row.tab, row.name);
        content->setContentsMargins(Gap, Gap, Gap, Gap);
        frame.widget()->setLayout(content);
        if (row.spot == 0) {
            lines.add(frame);
            return;
        }
        frame.spot = spot;
        spot->addWidget(frame.widget());
    }

    SetupForm& m_form;
    QDialog& m_dialog;
    LaidOutForm m_result;
};

} // namespace

LaidOutForm layOut(SetupForm& form, QDialog& dialog)
{
    return Builder(form, dialog).build();
}

} // namespace zan::dialogs
