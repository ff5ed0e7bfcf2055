#pragma once

#include "dialogs/FormDialog.h"
#include "dialogs/SetupForm.h"
#include "window/PanelEditor.h"
#include "window/PanelSetup.h"
#include "window/WindowFixture.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLayout>

namespace zan::dialogs {

/// A panel whose forms are filled in by a test.
class FormTest : public window::WindowTest
{
protected:
    /// A window of this content, with channels that a form can offer.
    void load(const char* controls)
    {
        addChannel("RTD", "LEVEL", "Level", "m");
        addChannel("RTD", "FLOW", "Flow", "l/s");
        addChannel("LOGGER", "BATT", "Battery", "V");
        fill("A", controls);
        panel->LoadWindow(QStringLiteral("A"));
        panel->editor().history().clear();
    }
    Ref<fake::FakeChannel> addChannel(const char* window, const char* key, const char* label, const char* units)
    {
        const auto added = channel(window, key);
        added->label = QString::fromLatin1(label);
        added->units = QString::fromLatin1(units);
        return added;
    }
    Ref<fake::FakeChannel> channel(const char* window, const char* key)
    {
        return logger->channel(QString::fromLatin1(window), QString::fromLatin1(key));
    }
    Ref<wrappers::iBenchControl> wrapper(int place = 1)
    {
        return panel->Controls()->Control(binding::Variant(place));
    }

    /// Opens the form of a control as its menu does; the user fills it in. False when no form was shown.
    bool open(const std::function<void(SetupForm&)>& user, int place = 1)
    {
        bool shown = false;
        forms.onForm = [&](surface::ModalForm& form) {
            shown = true;
            user(static_cast<SetupForm&>(form));
        };
        const Ref<wrappers::iBenchControl> control = wrapper(place);
        panel->edit([&](window::PanelEditor&) { panel->setup().edit(control); });
        forms.onForm = nullptr;
        return shown;
    }
    /// Opens the form and presses one of its buttons at once.
    void openAndPress(QStringView button)
    {
        open([&](SetupForm& form) { press(form, button); });
    }
    static void press(SetupForm& form, QStringView button) { form.userClick(form.field(button)); }
    static void type(SetupForm& form, QStringView field, const QString& text)
    {
        form.userText(form.field(field), text);
    }
    static QString text(SetupForm& form, QStringView field) { return form.field(field).text(); }
    /// Chooses the row of this text.
    static void choose(SetupForm& form, QStringView list, const QString& row)
    {
        Field& field = form.field(list);
        for (int place = 0; place < int(field.rows().size()); ++place) {
            if (field.rows()[std::size_t(place)].text == row)
                return form.userSelect(field, place);
        }
        ADD_FAILURE() << "no row " << row.toStdString();
    }
    static void key(QWidget& window, Qt::Key code, const QString& text = {})
    {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(window.focusWidget() ? window.focusWidget() : &window, &press);
    }

    /// Gives a field of the form's window the keyboard and types.
    static void typeInto(SetupForm& form, QStringView field, const QString& typed)
    {
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        auto* widget = dialog->findChild<QWidget*>(field.toString());
        ASSERT_TRUE(widget && widget->isVisible());
        widget->setFocus();
        for (const QChar letter : typed)
            key(*dialog, Qt::Key(letter.toUpper().unicode()), letter);
    }

    static QString tabs(SetupForm& form)
    {
        QStringList captions;
        for (const QStringView caption : form.description().tabs)
            captions << caption.toString();
        return captions.join(u',');
    }
    /// Tab, name and caption of every field, in order.
    static QString rows(SetupForm& form)
    {
        QStringList rows;
        for (const Field& field : form.fields())
            rows << QStringLiteral("%1 %2=%3").arg(field.row().tab).arg(field.name(), field.caption());
        return rows.join(QLatin1String("; "));
    }

    document::Node node(int place = 1) { return wrapper(place)->XMLNode(); }
    document::Node action() { return node().child(values::Name("ACTION")); }
    /// Text of an element, "-" where there is none.
    static QString element(const document::Node& parent, const char* name)
    {
        const document::Node child = parent.child(values::Name(name));
        return child ? child.text() : QStringLiteral("-");
    }
    QString stored(const char* name) { return element(node(), name); }
    /// The same of several, as "NAME=text NAME=text".
    QString storedTexts(const char* names)
    {
        QStringList texts;
        for (const QString& name : QString::fromLatin1(names).split(u' '))
            texts << name + QLatin1Char('=') + stored(name.toLatin1().constData());
        return texts.join(u' ');
    }
    QString storedAction(const char* name) { return element(action(), name); }
};

} // namespace zan::dialogs
