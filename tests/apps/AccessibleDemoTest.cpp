// The demo as a screen reader meets it: every window, from the panel down to the last control.
#include "HostFixture.h"

#include "support/ListeningTool.h"
#include "surface/host/LiveControl.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetControl.h"
#include "values/Convert.h"
#include "window/BenchWindow.h"

#include <QAccessible>
#include <QSet>

using namespace zan;
using surface::LiveControl;

namespace {

/// How a failure names a node.
std::string named(QAccessibleInterface& face)
{
    return QStringLiteral("role %1 \"%2\"").arg(face.role()).arg(face.text(QAccessible::Name)).toStdString();
}

/// Whether a user can meet it now.
bool isSeen(QAccessibleInterface& face)
{
    const QAccessible::State state = face.state();
    return !state.invisible && !state.offscreen;
}

class AccessibleDemo : public HostTest, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        QFile source(QStringLiteral(DEMO_SCHEME));
        ASSERT_TRUE(source.open(QIODevice::ReadOnly));
        write("demo.scheme", source.readAll());
        host::OpenOptions options;
        options.scheme = path("demo.scheme");
        options.offline = true;
        window.resize(1400, 1000);
        window.show();
        ASSERT_TRUE(window.openScheme(options));
        window.showWindow(QString::fromLatin1(GetParam()));
        settle();
        panel = window.currentPanel();
        ASSERT_TRUE(panel);
        root = QAccessible::queryAccessibleInterface(const_cast<surface::Surface*>(&panel->surface()));
        ASSERT_TRUE(root);
    }
    static void settle()
    {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }
    /// Looks at a node and all below it.
    void walk(QAccessibleInterface& face)
    {
        ++nodes;
        for (int place = 0; place < face.childCount(); ++place) {
            QAccessibleInterface* child = face.child(place);
            ASSERT_TRUE(child) << "child " << place << " of " << named(face);
            ASSERT_TRUE(child->isValid()) << "child " << place << " of " << named(face);
            EXPECT_FALSE(seen.contains(child)) << named(*child) << " is there twice";
            seen.insert(child);
            EXPECT_EQ(child->parent(), &face) << named(*child) << " in " << named(face);
            EXPECT_EQ(face.indexOfChild(child), place) << named(*child) << " in " << named(face);
            EXPECT_NE(child->role(), QAccessible::NoRole) << named(*child);
            // The corner of the toolkit's own tables is a node without a place.
            if (isSeen(*child) && isSeen(face) && face.role() != QAccessible::Table) {
                EXPECT_FALSE(child->rect().isEmpty()) << named(*child);
                EXPECT_TRUE(face.rect().contains(child->rect())) << named(*child) << " in " << named(face);
            }
            walk(*child);
        }
    }
    /// The face of a control, found by its place on the screen as a tool does that follows the pointer.
    QAccessibleInterface* faceOf(LiveControl& control) const
    {
        if (control.hosting() == LiveControl::Hosting::Widget)
            return QAccessible::queryAccessibleInterface(static_cast<surface::WidgetControl&>(control).widget());
        for (int place = 0; place < root->childCount(); ++place) {
            QAccessibleInterface* child = root->child(place);
            const QPoint corner = panel->surface().mapToGlobal(control.bounds().topLeft());
            if (!child->object() && child->rect().topLeft() == corner && roles(control).contains(child->role()))
                return child;
        }
        return nullptr;
    }
    /// What a control of this kind may be called; a type that is new has to be thought of here.
    static QList<QAccessible::Role> roles(const LiveControl& control)
    {
        using Role = surface::AccessibleRole;
        static const QHash<Role, QList<QAccessible::Role>> wanted{
            {Role::Text, {QAccessible::StaticText}},
            {Role::EditText, {QAccessible::EditableText}},
            {Role::Button, {QAccessible::Button}},
            {Role::CheckBox, {QAccessible::CheckBox}},
            {Role::RadioButton, {QAccessible::RadioButton}},
            {Role::Graphic, {QAccessible::Graphic}},
            {Role::Shape, {QAccessible::Graphic}},
            {Role::Progress, {QAccessible::ProgressBar}},
            {Role::Indicator, {QAccessible::Indicator}},
            {Role::Level, {QAccessible::ProgressBar}},
            {Role::Chart, {QAccessible::Tree, QAccessible::Table, QAccessible::Client, QAccessible::Grouping}},
        };
        return wanted.value(control.accessibleRole());
    }

    test::ListeningTool tool;
    host::MainWindow window{settings, dialogs};
    window::BenchWindow* panel = nullptr;
    QAccessibleInterface* root = nullptr;
    QSet<QAccessibleInterface*> seen;
    int nodes = 0;
};

} // namespace

TEST_P(AccessibleDemo, TheTreeOfEveryWindowIsWhole)
{
    EXPECT_EQ(root->text(QAccessible::Name), QLatin1String(GetParam()));
    walk(*root);
    EXPECT_GT(nodes, panel->Controls()->Count()) << "the surface and at least a node for each control";
}

TEST_P(AccessibleDemo, EveryControlThatIsSeenHasItsRoleANameAndTheStateThatIsShown)
{
    int looked = 0;
    for (const values::Ref<LiveControl>& control : panel->surface().controls()) {
        if (!control->visible())
            continue;
        SCOPED_TRACE(QStringLiteral("%1 %2").arg(control->name()).arg(control->index()).toStdString());
        QAccessibleInterface* face = faceOf(*control);
        ASSERT_TRUE(face);
        ++looked;
        EXPECT_TRUE(roles(*control).contains(face->role())) << face->role();
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty());
        EXPECT_EQ(bool(face->state().disabled), !control->enabled());
        EXPECT_FALSE(face->state().invisible);
        if (control->accessibleRole() == surface::AccessibleRole::CheckBox) {
            EXPECT_TRUE(face->state().checkable);
            EXPECT_EQ(bool(face->state().checked), values::toText(control->get(values::Name("Value"))) == "1");
        }
        if (control->accessibleRole() == surface::AccessibleRole::Level) {
            ASSERT_TRUE(face->valueInterface());
            EXPECT_EQ(face->valueInterface()->currentValue(),
                      QVariant(values::toDouble(control->get(values::Name("Value")))));
        }
    }
    EXPECT_GT(looked, 0);
}

TEST_P(AccessibleDemo, TheTabKeyReachesNothingWithoutAName)
{
    panel->setFocus();
    QSet<QWidget*> visited;
    for (QWidget* at = panel->nextInFocusChain(); at != panel; at = at->nextInFocusChain()) {
        const bool takesTab = at->isVisibleTo(panel) && at->isEnabled() && (at->focusPolicy() & Qt::TabFocus);
        if (!panel->isAncestorOf(at) || !takesTab)
            continue;
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(at);
        ASSERT_TRUE(face);
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty()) << at->metaObject()->className();
        EXPECT_TRUE(face->state().focusable) << at->metaObject()->className();
        visited.insert(at);
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, AccessibleDemo,
                         testing::Values("Overview", "Pumps", "Gates", "Trends", "Records"));
