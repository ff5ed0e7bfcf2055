#include "zanbench/ChangeWatch.h"

#include "document/StoredDefault.h"
#include "values/Convert.h"

#include <QByteArrayList>
#include <QCryptographicHash>

#include <algorithm>
#include <array>
#include <cmath>

namespace zan::host {

namespace {

const values::Name Changed("CHANGED");
const values::Name Control("CONTROL");
const values::Name AutoSize("AUTOSIZE");
const values::Name Type("TYPE");
const values::Name BindTo("BINDTO");
const values::Name Alignment("ALIGNMENT");
const values::Name Left("LEFT");
const values::Name Width("WIDTH");
const QLatin1String LabelType("VB.Label");
const values::Name Formula("FORMULA");
/// What a form writes back, when it is opened, for a channel without a formula.
const QLatin1String NoFormula("None");

/// An element that a panel writes of its own accord: at every scan, when it is locked or unlocked, when protected
/// controls are hidden. Whatever it held is written over by the next load or scan.
struct PanelsOwn
{
    values::Name name;
    QLatin1String type;       // of the control; empty for every type
    bool ofBound = false;     // only of controls with a channel
    bool ofAutoSized = false; // only of controls that take the size of their text
};

/// The place that a control keeps whatever its text is: a label that takes the size of its text grows to the left when
/// its text stands to the right, and to both sides when it is centred. Nothing for other controls.
std::optional<double> anchorOf(const document::Node& control)
{
    if (control.name() != Control || control.child(Type).text() != LabelType || !control.child(BindTo) ||
        !control.child(AutoSize))
        return std::nullopt;
    const double alignment = values::val(control.child(Alignment).text());
    if (alignment != 1 && alignment != 2)
        return std::nullopt;
    const double left = values::val(control.child(Left).text()), width = values::val(control.child(Width).text());
    return left + (alignment == 1 ? width : width / 2);
}

/// Whether the element is the panel's own affair.
bool isPanelsOwn(const document::Node& element)
{
    if (element.name() == Left && anchorOf(element.parent()))
        return true;
    static const QLatin1String bar("ZanBenchWindow.ValueBar"), label(LabelType);
    static const std::array rows = {
        PanelsOwn{values::Name("IGNORESCAN"), {}},
        PanelsOwn{values::Name("SHOWGRABHANDLES"), {}},
        PanelsOwn{values::Name("VISIBLE"), {}}, // a load shows every control
        PanelsOwn{values::Name("TOOLTIPTEXT"), bar, true},
        PanelsOwn{Width, label, true, true},
        PanelsOwn{values::Name("HEIGHT"), label, true, true},
    };
    const values::Name name = element.name();
    return std::any_of(rows.begin(), rows.end(), [&](const PanelsOwn& row) {
        if (row.name != name)
            return false;
        const document::Node control = element.parent();
        return control.name() == Control && (row.type.isEmpty() || control.child(Type).text() == row.type) &&
               (!row.ofBound || control.child(BindTo)) && (!row.ofAutoSized || control.child(AutoSize));
    });
}

/// Adds an element and what lies below it. Elements that hold nothing, or what a read has stored, say as much as
/// elements that are not there.
void addSubstance(const document::Node& element, QByteArray& substance)
{
    const values::Name name = element.name();
    if (name == Changed || document::isStoredDefault(element) || isPanelsOwn(element))
        return;
    const qsizetype before = substance.size();
    bool any = !element.attributes().empty();
    if (!element.firstChildElement()) {
        const QString text = element.text();
        any = any || !(text.isEmpty() || (name == Formula && text == NoFormula));
        substance += name.text().toUtf8() + '=' + text.toUtf8() + '\0';
    } else {
        substance += name.text().toUtf8() + '<';
        if (const std::optional<double> anchor = anchorOf(element))
            substance += QByteArray::number(std::round(*anchor), 'f', 0);
        const qsizetype head = substance.size();
        for (document::Node child = element.firstChildElement(); child; child = child.nextSiblingElement())
            addSubstance(child, substance);
        any = any || substance.size() > head;
        substance += '>';
    }
    if (!any)
        substance.truncate(before);
}

QByteArray substanceOf(const document::Node& element)
{
    QByteArray substance;
    addSubstance(element, substance);
    return substance.isEmpty() ? substance : QCryptographicHash::hash(substance, QCryptographicHash::Sha1);
}

} // namespace

ChangeWatch::ChangeWatch(values::Ref<trellis::SchemeFile> scheme)
    : m_scheme(std::move(scheme))
{
    // A file that was stored with its mark set carries changes that nobody has looked at yet; they are in the file.
    settle();
}

ChangeWatch::Parts ChangeWatch::parts() const
{
    Parts parts;
    const document::Node root = m_scheme->document().documentElement();
    for (document::Node child = root.firstChildElement(); child; child = child.nextSiblingElement())
        parts.push_back({child, substanceOf(child)});
    return parts;
}

ChangeWatch::Part* ChangeWatch::settledPart(const document::Node& element)
{
    if (!m_settled)
        return nullptr;
    const auto found = std::find_if(m_settled->begin(), m_settled->end(),
                                    [&](const Part& part) { return part.element == element; });
    return found == m_settled->end() ? nullptr : &*found;
}

void ChangeWatch::clearMark()
{
    const document::Node root = m_scheme->document().documentElement();
    root.removeChild(root.child(Changed));
}

void ChangeWatch::settle()
{
    clearMark();
    m_settled = parts();
    m_changed = false;
}

void ChangeWatch::settle(const document::Node& window)
{
    if (Part* part = settledPart(window))
        part->substance = substanceOf(window);
    if (!m_changed)
        clearMark();
}

void ChangeWatch::neverSettled()
{
    m_settled.reset();
    m_changed = true;
}

bool ChangeWatch::isChanged()
{
    return m_changed || (m_scheme->isChanged() && compare());
}

bool ChangeWatch::isChanged(const document::Node& window)
{
    isChanged(); // a mark that is there already says something of the others
    const Part* part = settledPart(window);
    return !part || part->substance != substanceOf(window);
}

bool ChangeWatch::compare()
{
    const auto hashes = [](const Parts& parts) {
        QByteArrayList list;
        for (const Part& part : parts)
            if (!part.substance.isEmpty())
                list.append(part.substance);
        return list;
    };
    m_changed = !m_settled || hashes(parts()) != hashes(*m_settled);
    if (!m_changed)
        clearMark();
    return m_changed;
}

} // namespace zan::host
