#include "FormFixture.h"

#include "surface/text/MnemonicText.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSet>

#include <cmath>

/// Rules that hold for every setup form there is; a new form is asked without being named here.
namespace zan::dialogs {
namespace {

class EveryForm : public FormTest
{
protected:
    using Look = std::function<void(SetupForm& form, QDialog& dialog)>;

    /// Opens every form once, each over a control of its type, and the panel's own.
    void forEachForm(const Look& look)
    {
        QString controls;
        QSet<const FormDescription*> known;
        for (const wrappers::ControlType& type : panel->controlTypes()) {
            if (!type.setup || known.contains(type.setup))
                continue;
            known.insert(type.setup);
            controls += QStringLiteral("<CONTROL><TYPE>%1</TYPE><BINDTO>RTD|FLOW</BINDTO>"
                                       "<TOOLTIPTEXT>Flow over the weir</TOOLTIPTEXT></CONTROL>")
                            .arg(type.key);
        }
        load(controls.toUtf8().constData());
        for (int place = 1; place <= int(known.size()); ++place)
            EXPECT_TRUE(open([&](SetupForm& form) { show(form, look); }, place)) << place;
        forms.onForm = [&](surface::ModalForm& form) { show(static_cast<SetupForm&>(form), look); };
        panel->edit([&](window::PanelEditor&) { panel->setup().editWindow(); });
        forms.onForm = nullptr;
        EXPECT_GE(m_looked.size(), 9);
    }

    /// What can be seen of a form: each of its tabs, with each of the frames that share a spot there in front.
    static void forEachPage(SetupForm& form, const std::function<void(const QString& page)>& look)
    {
        for (int tab = 0; tab < std::max<int>(1, int(form.description().tabs.size())); ++tab) {
            form.userTab(tab);
            QStringList frames;
            for (const Field& field : form.fields()) {
                if (field.kind() == FieldKind::Frame && field.row().spot > 0 && field.row().tab == tab)
                    frames << field.name();
            }
            if (frames.isEmpty())
                frames << QString();
            for (const QString& front : frames) {
                for (const QString& frame : frames)
                    putForward(form, frame, frame == front);
                QCoreApplication::processEvents();
                look(QStringLiteral("%1-%2%3").arg(form.name()).arg(tab).arg(front));
            }
        }
    }

    static QWidget* widgetOf(QDialog& dialog, const Field& field)
    {
        return dialog.findChild<QWidget*>(field.name());
    }
    /// Those that the keyboard can be given, in the order in which the Tab key walks them.
    static std::vector<QWidget*> tabOrder(QDialog& dialog)
    {
        std::vector<QWidget*> order;
        QWidget* widget = &dialog;
        while ((widget = widget->nextInFocusChain()) != &dialog) {
            if (widget->isVisibleTo(&dialog) && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) &&
                !widget->focusProxy())
                order.push_back(widget);
        }
        return order;
    }

private:
    void show(SetupForm& form, const Look& look)
    {
        if (m_looked.contains(form.name()))
            return;
        m_looked.insert(form.name());
        SCOPED_TRACE(form.name().toStdString());
        QDialog* dialog = form.dialog(nullptr);
        dialog->show();
        QCoreApplication::processEvents();
        look(form, *dialog);
    }
    static void putForward(SetupForm& form, const QString& frame, bool inFront)
    {
        if (frame.isEmpty())
            return;
        Field& field = form.field(frame);
        form.setVisible(field, inFront);
        form.setEnabled(field, inFront);
        if (inFront)
            form.bringToFront(field);
    }

    QSet<QString> m_looked;
};

// What is seen -------------------------------------------------------------------------------------------------

/// What is shown of a text that is wider than its widget, or of a widget outside of what it stands in; empty for nothing.
QString whatIsCut(const QDialog& dialog)
{
    QStringList cut;
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* frame = qobject_cast<const QGroupBox*>(widget);
        if (!widget->isVisible() || !(label || button || frame))
            continue;
        // An example in a large font is cut rather than the form made larger.
        if (widget->objectName().contains(QLatin1String("Example")))
            continue;
        const QString text = label ? label->text() : button ? button->text() : frame->title();
        const int needed = text.isEmpty() ? 0 : widget->fontMetrics().size(Qt::TextShowMnemonic, text).width();
        if (widget->width() < needed || widget->height() < (text.isEmpty() ? 0 : widget->fontMetrics().height()))
            cut << QStringLiteral("\"%1\" has %2 of %3").arg(text).arg(widget->width()).arg(needed);
        if (!widget->parentWidget()->rect().contains(widget->geometry()))
            cut << QStringLiteral("\"%1\" stands outside").arg(text);
    }
    return cut.join(QLatin1String("; "));
}

TEST_F(EveryForm, HasTheClientAreaThatItIsGiven)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        const FormDescription& description = form.description();
        if (description.width > 0) {
            EXPECT_EQ(dialog.size(), QSize(description.width / 15, description.height / 15));
        }
    });
}

TEST_F(EveryForm, CutsNothingOnAnyPage)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        forEachPage(form,
                    [&](const QString& page) { EXPECT_EQ(whatIsCut(dialog), QString()) << page.toStdString(); });
    });
}

TEST_F(EveryForm, CutsNothingWithAFontOfTwiceTheSize)
{
    const QFont before = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(before); });
    QFont large = before;
    large.setPointSizeF(before.pointSizeF() * 2);
    QApplication::setFont(large);
    forEachForm([](SetupForm& form, QDialog& dialog) {
        forEachPage(form,
                    [&](const QString& page) { EXPECT_EQ(whatIsCut(dialog), QString()) << page.toStdString(); });
    });
}

/// Words of another language are longer: the form grows with them.
TEST_F(EveryForm, CutsNothingOfCaptionsThatAreHalfAsLongAgain)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        for (QWidget* widget : dialog.findChildren<QWidget*>()) {
            const auto longer = [](const QString& text) { return text + text.left((text.size() + 1) / 2); };
            if (auto* label = qobject_cast<QLabel*>(widget); label && !label->text().isEmpty())
                label->setText(longer(label->text()));
            else if (auto* frame = qobject_cast<QGroupBox*>(widget))
                frame->setTitle(longer(frame->title()));
        }
        for (Field& field : form.fields()) {
            if (field.kind() == FieldKind::Button || field.kind() == FieldKind::CheckBox ||
                field.kind() == FieldKind::Option)
                form.setCaption(field, field.caption() + field.caption().left((field.caption().size() + 1) / 2));
        }
        QEvent changed(QEvent::FontChange); // the form measures itself anew
        QCoreApplication::sendEvent(&dialog, &changed);
        QCoreApplication::processEvents();
        forEachPage(form,
                    [&](const QString& page) { EXPECT_EQ(whatIsCut(dialog), QString()) << page.toStdString(); });
    });
}

TEST_F(EveryForm, IsAMirrorImageWhereOneReadsFromTheRightAndCutsNothing)
{
    const auto restore = qScopeGuard([] { QApplication::setLayoutDirection(Qt::LeftToRight); });
    QApplication::setLayoutDirection(Qt::RightToLeft);
    forEachForm([](SetupForm& form, QDialog& dialog) {
        const QWidget* ok = widgetOf(dialog, form.field(u"cmdOK"));
        const QWidget* cancel = widgetOf(dialog, form.field(u"cmdCancel"));
        const bool okFirst = &form.field(u"cmdOK") < &form.field(u"cmdCancel");
        EXPECT_EQ(ok->x() > cancel->x(), okFirst);
        forEachPage(form,
                    [&](const QString& page) { EXPECT_EQ(whatIsCut(dialog), QString()) << page.toStdString(); });
    });
}

// The keyboard -------------------------------------------------------------------------------------------------

TEST_F(EveryForm, TheTabKeyWalksTheFieldsOfAPageInTheOrderOfTheirRows)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        forEachPage(form, [&](const QString& page) {
            QStringList wanted;
            for (const Field& field : form.fields()) {
                const QWidget* widget = widgetOf(dialog, field);
                if (widget && widget->isVisibleTo(&dialog) && form.canUse(field) &&
                    (widget->focusPolicy() & Qt::TabFocus))
                    wanted << field.name();
            }
            QStringList walked;
            for (const QWidget* widget : tabOrder(dialog)) {
                if (form.find(widget->objectName()))
                    walked << widget->objectName();
            }
            EXPECT_EQ(walked.join(u' ').toStdString(), wanted.join(u' ').toStdString()) << page.toStdString();
        });
    });
}

TEST_F(EveryForm, EveryFieldThatCanBeUsedIsReachedWithTheKeyboard)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        forEachPage(form, [&](const QString& page) {
            for (const Field& field : form.fields()) {
                const QWidget* widget = widgetOf(dialog, field);
                switch (field.kind()) {
                case FieldKind::Label:
                case FieldKind::Caption:
                case FieldKind::Frame:
                case FieldKind::Picture:
                    continue;
                default:
                    break;
                }
                ASSERT_TRUE(widget) << field.name().toStdString();
                EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus)
                    << page.toStdString() << ' ' << field.name().toStdString();
            }
        });
    });
}

/// Captions are what they have always been, and some of their letters meet; the key then goes from one to the next. What
/// stands here is every such meeting: a new one is a mistake.
TEST_F(EveryForm, NoLetterOfAPageOpensTwoThingsButThoseThatTheCaptionsHaveAlwaysHad)
{
    QStringList met;
    forEachForm([&](SetupForm& form, QDialog&) {
        QStringList tabs;
        for (const QStringView caption : form.description().tabs)
            tabs << caption.toString();
        for (int tab = 0; tab < std::max<int>(1, int(tabs.size())); ++tab) {
            std::map<QChar, QStringList> byLetter;
            const auto note = [&byLetter](const QString& caption) {
                const qsizetype mark = caption.indexOf(u'&');
                if (mark >= 0 && mark + 1 < caption.size())
                    byLetter[caption.at(mark + 1).toUpper()] << surface::withoutMnemonic(caption);
            };
            for (const QString& caption : tabs)
                note(caption);
            for (const Field& field : form.fields()) {
                if (field.row().tab == tab || field.row().tab == BelowTabs)
                    note(field.caption());
            }
            for (const auto& [letter, captions] : byLetter) {
                if (captions.size() > 1)
                    met << QStringLiteral("%1-%2: %3").arg(form.name()).arg(tab).arg(captions.join(u'/'));
            }
        }
    });
    met.sort();
    const QStringList always = {
        QStringLiteral("frmBenchProp-0: Background/Backcolour"),
        QStringLiteral("frmBenchProp-0: Font/OK"),
        QStringLiteral("frmBenchProp-0: Format/Forecolour"),
        QStringLiteral("frmBenchProp-1: Background/Browse"),
        QStringLiteral("frmChannel-0: Add/Apply"),
        QStringLiteral("frmChannel-0: Channel/Cancel"),
        QStringLiteral("frmChannel-1: Channel/Cancel"),
        QStringLiteral("frmChannel-1: Font/OK"),
        QStringLiteral("frmChannel-1: Format/Forecolour"),
        QStringLiteral("frmCheckBox-0: Actions/Apply"),
        QStringLiteral("frmCheckBox-1: Actions/Apply"),
        QStringLiteral("frmCheckBox-1: Font/OK"),
        QStringLiteral("frmCheckBox-1: Format/Forecolour"),
        QStringLiteral("frmCmd-0: Actions/Apply"),
        QStringLiteral("frmCmd-1: Actions/Apply"),
        QStringLiteral("frmCmd-1: Font/OK"),
        QStringLiteral("frmProgressBar-0: Actions/Apply"),
        QStringLiteral("frmStatusLight-0: Actions/Apply"),
        QStringLiteral("frmStatusLight-1: Actions/Apply"),
        QStringLiteral("frmStatusLight-1: Font/OK"),
        QStringLiteral("frmValueBar-0: Actions/Apply"),
    };
    EXPECT_EQ(met.join(u'\n').toStdString(), always.join(u'\n').toStdString());
}

TEST_F(EveryForm, EnterPressesNothingAndEscHasTheRoleThatTheFormGivesIt)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        key(dialog, Qt::Key_Return);
        key(dialog, Qt::Key_Enter);
        EXPECT_TRUE(form.isOpen());
        for (const auto* button : dialog.findChildren<QPushButton*>())
            EXPECT_FALSE(button->isDefault() || button->autoDefault()) << button->objectName().toStdString();
        const bool closes = form.description().escape == u"cmdCancel"; // else it applies, or does nothing
        key(dialog, Qt::Key_Escape);
        EXPECT_EQ(form.isOpen(), !closes);
    });
}

// Screen readers -----------------------------------------------------------------------------------------------

TEST_F(EveryForm, EveryFieldHasANameForScreenReaders)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        for (const Field& field : form.fields()) {
            QWidget* widget = widgetOf(dialog, field);
            if (!widget || (field.kind() == FieldKind::Label && field.text().isEmpty()))
                continue;
            // A frame without a caption only holds others together.
            if (field.kind() == FieldKind::Frame && field.caption().isEmpty())
                continue;
            const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
            ASSERT_TRUE(spoken) << field.name().toStdString();
            EXPECT_FALSE(spoken->text(QAccessible::Name).trimmed().isEmpty()) << field.name().toStdString();
            EXPECT_FALSE(spoken->text(QAccessible::Name).contains(u'&')) << field.name().toStdString();
        }
    });
}

TEST_F(EveryForm, NoTwoFieldsOfAPageSoundAlike)
{
    forEachForm([](SetupForm& form, QDialog& dialog) {
        forEachPage(form, [&](const QString& page) {
            QSet<QString> names;
            for (const QWidget* widget : tabOrder(dialog)) {
                if (!form.find(widget->objectName()))
                    continue;
                const QString name =
                    QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget))->text(QAccessible::Name);
                EXPECT_FALSE(names.contains(name)) << page.toStdString() << ": " << name.toStdString();
                names.insert(name);
            }
        });
    });
}

// Pictures to look at --------------------------------------------------------------------------------------------

QPalette darkPalette()
{
    QPalette dark(QColor(53, 53, 53), QColor(42, 42, 42));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    return dark;
}

/// Contrast of two colours as accessibility guidelines reckon it: 1 to 21.
double contrast(const QColor& one, const QColor& other)
{
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// Where the environment names a folder in ZAN_FORM_PICTURES, every page of every form is written there.
void picture(QDialog& dialog, const QString& page, const QString& palette)
{
    const QString folder = qEnvironmentVariable("ZAN_FORM_PICTURES");
    if (folder.isEmpty())
        return;
    const QString file =
        QStringLiteral("%1-%2-%3.png").arg(page, palette).arg(int(dialog.devicePixelRatio() * 100));
    EXPECT_TRUE(dialog.grab().save(QDir(folder).filePath(file))) << file.toStdString();
}

class EveryFormOfAPalette : public EveryForm
{
protected:
    void looks(const QPalette& palette, const QString& name)
    {
        const QPalette before = QApplication::palette();
        const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
        QApplication::setPalette(palette);
        forEachForm([&](SetupForm& form, QDialog& dialog) {
            forEachPage(form, [&](const QString& page) {
                picture(dialog, page, name);
                canBeRead(dialog, page);
            });
        });
    }

private:
    static void canBeRead(const QDialog& dialog, const QString& page)
    {
        for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->objectName().contains(QLatin1String("Example")))
                continue; // an example has the colours of its control
            const QPalette& palette = widget->palette();
            EXPECT_GE(contrast(palette.color(widget->foregroundRole()), palette.color(widget->backgroundRole())),
                      widget->isEnabled() ? 4.5 : 1.2)
                << page.toStdString() << ' ' << widget->objectName().toStdString();
        }
    }
};

TEST_F(EveryFormOfAPalette, CanBeReadInTheLightOne)
{
    looks(QApplication::palette(), QStringLiteral("light"));
}

TEST_F(EveryFormOfAPalette, CanBeReadInTheDarkOne)
{
    looks(darkPalette(), QStringLiteral("dark"));
}

} // namespace
} // namespace zan::dialogs
