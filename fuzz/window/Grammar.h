#pragma once

#include "Dice.h"

#include "binding/MemberTable.h"
#include "window/ControlTypes.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace zan::fuzz {

/// Speaks the language of schemes, by choices of the dice: types, elements, properties and members come from the
/// library's own tables, the values from what is known to be hard.
class Grammar
{
public:
    /// Files are named by some texts: a picture, a map, what is neither.
    explicit Grammar(const QStringList& files)
        : m_files(files)
    {
        for (const wrappers::ControlType& type : window::controlTypes())
            m_types << type.key.toString();
        for (const char* name : ElementNames)
            m_elements << QString::fromLatin1(name);
        std::vector<QString> members;
        for (const binding::MemberTable* table : binding::MemberTable::all()) {
            for (const binding::Member& member : table->members())
                members.push_back(member.name.text());
        }
        std::sort(members.begin(), members.end()); // tables are listed in no order
        members.erase(std::unique(members.begin(), members.end()), members.end());
        for (const QString& name : members)
            m_members << name;
    }

    QString type(Dice& dice) const { return dice.oneIn(16) ? text(dice) : dice.pick(m_types); }
    QString element(Dice& dice) const
    {
        return dice.oneIn(3) ? dice.pick(m_members).toUpper() : dice.pick(m_elements);
    }
    QString member(Dice& dice) const { return dice.pick(m_members); }

    /// A value as a document's text or a script's argument.
    QString text(Dice& dice) const
    {
        switch (dice.below(9)) {
        case 0:
            return dice.raw(12);
        case 1:
            return QString::number(int(dice.byte()) - 20);
        case 2:
            return QString::number(double(dice.byte()) * dice.byte() / 7);
        case 3:
            return dice.pick(m_types);
        case 4:
            return dice.pick(m_files);
        case 5:
            return QString(qsizetype(dice.byte()) * 40, QChar(u'W'));
        default:
            return QString::fromUtf8(dice.pick(Texts));
        }
    }

    QString script(Dice& dice) const
    {
        QString code = QStringLiteral("Sub Main\\n");
        if (dice.oneIn(3))
            code += QStringLiteral("On Error Resume Next\\n");
        for (std::size_t left = 1 + dice.below(4); left > 0; --left)
            code += statement(dice) + QStringLiteral("\\n");
        return code + QStringLiteral("End Sub");
    }

    QString scheme(Dice& dice) const
    {
        QString xml = QStringLiteral("<SCHEME><NAME>Site</NAME>");
        for (std::size_t place = 0, count = 1 + dice.below(3); place < count; ++place)
            xml += window(dice, QChar(char16_t(u'A' + place)));
        return xml + QStringLiteral("</SCHEME>");
    }

    /// The CONTROL element of a control.
    QString control(Dice& dice) const
    {
        QString xml = QStringLiteral("<CONTROL>") + wrap("TYPE", type(dice));
        for (const char* measure : {"LEFT", "TOP", "WIDTH", "HEIGHT"}) {
            xml += dice.oneIn(12) ? wrap(measure, text(dice)) : wrap(measure, QString::number(dice.byte() * 15));
        }
        if (dice.oneIn(2))
            xml += wrap("BINDTO", QString::fromUtf8(dice.pick(Bindings)));
        if (dice.oneIn(3))
            xml += action(dice);
        return xml + some(dice, 6) + QStringLiteral("</CONTROL>");
    }

    static constexpr const char* WindowKeys[] = {"A", "B", "C", "a", "KEEL", ""};

private:
    QString window(Dice& dice, QChar key) const
    {
        QString xml = QStringLiteral("<WINDOW>") + wrap("KEY", key);
        for (const char* channel : {"X", "Y"}) {
            xml += QStringLiteral("<CHANNEL>") + wrap("KEY", QString::fromLatin1(channel)) +
                   wrap("LABEL", QStringLiteral("Label")) + wrap("FORMAT", text(dice)) +
                   QStringLiteral("</CHANNEL>");
        }
        if (dice.oneIn(2))
            xml += QStringLiteral("<CONTAINER>") + some(dice, 6) + QStringLiteral("</CONTAINER>");
        for (std::size_t left = dice.below(7); left > 0; --left)
            xml += control(dice);
        return xml + QStringLiteral("</WINDOW>");
    }

    QString action(Dice& dice) const
    {
        static constexpr const char* Kinds[] = {"SET", "PUT", "TOGGLE", "VESPER", "SCRIPT", "SCRIPT"};
        QString xml = QStringLiteral("<ACTION>") + wrap("TYPE", QString::fromLatin1(dice.pick(Kinds)));
        if (dice.oneIn(2))
            xml += wrap("SCRIPT", script(dice));
        return xml + some(dice, 4) + QStringLiteral("</ACTION>");
    }

    /// Some elements, a few of them with elements of their own.
    QString some(Dice& dice, std::size_t most, int depth = 0) const
    {
        QString xml;
        for (std::size_t left = dice.below(most + 1); left > 0; --left) {
            const QString name = element(dice);
            if (depth < 2 && dice.oneIn(5))
                xml += QStringLiteral("<%1>%2</%1>").arg(name, some(dice, 5, depth + 1));
            else
                xml += wrap(name, text(dice));
        }
        return xml;
    }

    QString literal(Dice& dice) const
    {
        return dice.oneIn(2) ? QString::number(int(dice.byte()) - 2)
                             : u'"' + text(dice).replace(u'"', u' ').left(300) + u'"';
    }

    QString object(Dice& dice) const
    {
        const QString name = QString::fromLatin1(dice.pick(Objects));
        return dice.oneIn(4) ? name + u'.' + member(dice) : name;
    }

    QString statement(Dice& dice) const
    {
        const QString what = object(dice) + u'.' + member(dice);
        switch (dice.below(7)) {
        case 0:
            return what + QStringLiteral(" = ") + literal(dice);
        case 1:
            return QStringLiteral("Set ") + what + QStringLiteral(" = ") + object(dice);
        case 2:
            return what + u' ' + literal(dice);
        case 3:
            return QStringLiteral("x = ") + what;
        case 4:
            return QStringLiteral("For Each c In Window.Controls: c.Control.%1 = %2: Next")
                .arg(member(dice), literal(dice));
        default:
            return QString::fromUtf8(dice.pick(Statements));
        }
    }

    static QString wrap(const QString& name, const QString& text)
    {
        return QStringLiteral("<%1>%2</%1>").arg(name, text.toHtmlEscaped());
    }
    static QString wrap(const char* name, const QString& text) { return wrap(QString::fromLatin1(name), text); }

    static constexpr const char* ElementNames[] = {
#include "ElementNames.inc"
    };
    static constexpr const char* Texts[] = {"",
                                            "0",
                                            "-1",
                                            "1",
                                            "2",
                                            "3",
                                            "255",
                                            "16777215",
                                            "-2147483633",
                                            "-2147483648",
                                            "2147483648",
                                            "32767",
                                            "-32769",
                                            "1e300",
                                            "1e-300",
                                            "-1e9",
                                            "NaN",
                                            "0,5",
                                            "&H10",
                                            "True",
                                            "A",
                                            "B",
                                            "x",
                                            "CHANNEL",
                                            "PROGRAM",
                                            "CONNECT",
                                            "UNLOAD",
                                            "DISCONNECT",
                                            "<",
                                            ">",
                                            "=",
                                            "<>",
                                            "<=",
                                            "MS Sans Serif",
                                            "Terminal",
                                            "0.00",
                                            "\"On\";;\"Off\"",
                                            "@@@",
                                            "hh:nn",

                                            "\xc3\xa4\xe2\x82\xac\xf0\x9f\x8c\x8a",
                                            "two\nlines\tand tabs",
                                            "<b>&amp;</b>",
                                            "&Access",
                                            "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>",
                                            "<X",
                                            "CHECKEDVALUE",
                                            "A|X",
                                            "A|Y|Z",
                                            "|"};
    static constexpr const char* Bindings[] = {"A|X", "A|Y", "B|X", "A|NONE", "NONE|X", "A", "|", "A|X|Y", "a|x"};
    static constexpr const char* Objects[] = {"Control",
                                              "Window",
                                              "Control.Control",
                                              "Window.Controls(1)",
                                              "Window.Controls(1).Control",
                                              "Window.Controls",
                                              "Window.SiteMap",
                                              "Logger",
                                              "Logger.Link",
                                              "Scheme",
                                              "Scheme.Windows(\"A\")",
                                              "Control.Control.Font",
                                              "Window.Controls(2)"};
    static constexpr const char* Statements[] = {"Control.Value = True",
                                                 "Control.Control.Value = 1",
                                                 "Control.Control.Value = 1 - Control.Control.Value",
                                                 "Window.LoadWindow \"B\"",
                                                 "Window.LoadWindow \"A\"",
                                                 "Window.Clear",
                                                 "Window.Controls.Remove 1",
                                                 "Window.Controls.Clear",
                                                 "Window.Controls.Add \"VB.CommandButton\"",
                                                 "Set Control.Control = Control",
                                                 "Window.SaveWindow",
                                                 "MsgBox \"x\"",
                                                 "x = InputBox(\"x\")",
                                                 "Logger.Link.Connect",
                                                 "Logger.Link.Disconnect",
                                                 "Window.Undo",
                                                 "Window.Redo",
                                                 "Window.ShowProgress",
                                                 "Window.Refresh",
                                                 "Window.LockPositions = False",
                                                 "Set Window.Logger = Nothing",
                                                 "Set Control.Control.Font = Window.Font",
                                                 "x = 1 / 0",
                                                 "Control.ZOrder 1",
                                                 "Set Window.Picture = Window.Controls(1).Control.Picture",
                                                 "Scheme.Windows(\"A\").Item(\"X\").Value = 1"};

    QStringList m_types, m_elements, m_members, m_files;
};

} // namespace zan::fuzz
