#pragma once

#include "zanbench/ChangeWatch.h"
#include "zanbench/KeptWindow.h"
#include "zanbench/OpenedSite.h"
#include "zanbench/PanelForms.h"
#include "zanbench/PanelView.h"
#include "zanbench/Settings.h"

#include <QPointer>
#include <QStackedWidget>

#include <memory>
#include <vector>

namespace zan::window {
class BenchWindow;
}

namespace zan::host {

/// The panels of the open site: each window of the scheme that has been shown has a page with a panel of its own
/// until the site is closed.
///
/// A script may have its panel load another window, or clear it, which empties the document of the window that it
/// leaves. The pages put that document back as it last was, so that whoever saves next saves all of it, and go by
/// what the panel shows from then on.
class PanelPages : public QStackedWidget
{
    Q_OBJECT
public:
    /// What holds for all panels.
    struct Manner
    {
        /// Positions and menus: who presses a button of a locked panel changes nothing of its layout.
        bool isLocked = true;
        bool hidesProtected = false;
        bool showsGuides = false;
        bool isEditedByKeyboard = false;
    };

    /// Settings and forms must outlive the pages.
    PanelPages(Settings& settings, PanelForms& forms, QWidget* parent = nullptr);
    ~PanelPages() override;

    /// Begins with a site, without a page; `host` is what scripts see as Window.Host. All of them outlive close().
    void open(OpenedSite& site, ChangeWatch& watch, const Ref<binding::Object>& host);
    /// Keeps the design values of all panels in the settings and drops the panels.
    void close();
    void storeBags();

    /// Shows a window of the scheme, given as the scheme writes its key. Raises what loading it raises.
    void show(const QString& key);
    /// Has the panel in front lay out a window of an older terminal, and shows it. The window that it has shown keeps its
    /// document. Raises what the import raises.
    void importOlderWindow(const QString& file);
    window::BenchWindow* currentPanel() const;
    /// Key of the window that is shown; empty for none, and for a panel that shows no window of the scheme.
    QString currentKey() const;
    /// All panels: a copy that stands while what is done with one of them changes the pages.
    std::vector<QPointer<window::BenchWindow>> panels() const;

    /// Applies to all panels, later ones too. Raises what a panel raises.
    void setManner(const Manner& manner);
    const Manner& manner() const { return m_manner; }
    /// Zoom of all panels, as PanelView takes it.
    void setZoom(int percent);
    int zoom() const { return m_zoom; }
    /// The percentage that the panel in front is drawn at.
    double shownZoom() const;
    /// Whether a panel is on its way from one window to another: documents are to be left alone then.
    bool isLoading() const;
    /// Every panel brings its window up to date in the document. Raises what a panel raises.
    void updateDocuments();
    /// Every panel looks at its channels and at the link anew.
    void refresh();

Q_SIGNALS:
    /// Another window is shown, or the list of the scheme's windows may be another: by show() or by a script.
    void shownChanged();
    /// A site was chosen on a panel's map: its SCHEME, and the map file that it stands in. Comes when the choice has
    /// ended, so that the panel may go.
    void schemeChosen(const QString& scheme, const QString& mapFile);
    /// A panel's edits are others than before: one was made, taken back or made again.
    void edited(window::BenchWindow* panel);
    /// A panel was locked or unlocked by its own menu or by a script, against the manner of all.
    void lockAsked(bool lock);
    /// A panel has failed where nobody could take the error.
    void failed(int number, const QString& description);

private:
    struct Page
    {
        QString key; // empty while its panel shows no window of the scheme
        PanelView* view = nullptr;
        window::BenchWindow* panel = nullptr;
        int changes = 0;                     // loads under way on the panel, one in another
        std::vector<KeptWindow> kept;        // of the windows that they leave
        bool wasChanged = false;             // when the first of them began
        std::vector<document::Node> windows; // of the scheme, then
    };

    Page* pageOf(const QString& key) const;
    Page* pageOf(const QWidget* view) const;
    Page* pageOf(const window::BenchWindow& panel) const;
    Page& load(const QString& key);
    void bringToFront(Page& page);
    void followZoom();
    void applyManner(window::BenchWindow& panel) const;
    void connectPanel(window::BenchWindow& panel);
    void followLock(window::BenchWindow& panel);
    std::vector<document::Node> windows() const;
    void leaving(Page& page);
    void entered(Page& page);
    void adopt(Page& page);
    void replace(Page& page);
    void drop(Page& page);
    template <class Action>
    void guarded(Action action);

    Settings& m_settings;
    PanelForms& m_forms;
    OpenedSite* m_site = nullptr;
    ChangeWatch* m_watch = nullptr;
    Ref<binding::Object> m_host;
    Manner m_manner;
    int m_zoom = 100;
    std::vector<std::unique_ptr<Page>> m_pages;
};

} // namespace zan::host
