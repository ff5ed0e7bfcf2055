#pragma once

#include "site/Logger.h"
#include "surface/forms/HostForms.h"
#include "values/Colour.h"

#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>

class QFrame;
class QLabel;
class QTimer;

namespace zan::display {

class ProgressPicture;

/// The small modeless window that shows what the link is doing: a computer, a logger and coloured blocks that travel
/// between them, a status line and, once a percentage has arrived, a bar. It closes itself when the logger has
/// finished, one way or the other.
class frmProgress : public QWidget
{
    Q_OBJECT
public:
    /// Forms show the error boxes; they must outlive the window.
    explicit frmProgress(QWidget* owner, surface::HostForms& forms);
    ~frmProgress() override;

    /// Whose events the window follows.
    void setLogger(const values::Ref<site::Logger>& logger);
    /// Empties the texts and hides the bar, as when the window is opened anew.
    void clear();
    QString caption() const { return windowTitle(); }
    void setCaption(const QString& caption) { setWindowTitle(caption); }
    QString siteText() const;
    void setSiteText(const QString& text);
    /// Hides the window and gives it up, as its close box does: it follows the logger no more and goes at the end of
    /// this turn. Whoever wants a progress window now makes a new one.
    void unload();
    /// False from unload() on.
    bool isLoaded() const { return m_isLoaded; }

    /// One step of the animation: each block moves 200 twips and turns back at either end.
    void tick();

    // For whoever wants to see what is shown: places in twips.
    static constexpr int BlockCount = 4;
    int blockLeft(int block) const { return m_blocks[std::size_t(block)].left; }
    bool movesLeft(int block) const { return m_blocks[std::size_t(block)].backwards; }
    values::Colour blockColour(int block) const { return m_blocks[std::size_t(block)].colour; }
    bool barVisible() const;
    const ProgressPicture& bar() const { return *m_bar; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Block
    {
        int left = 0;           // twips
        bool backwards = false; // moves to the left
        values::Colour colour;
    };
    class Scene;

    void setColour(values::Colour colour);
    void onConnectionProgress(const QString& message);
    void onPercentage(int percentage, const QString& message);
    void onConnectionError(const QString& message);
    void yield();

    surface::HostForms& m_forms;
    values::Ref<site::Logger> m_logger;
    QObject m_context; // owner of the connections to the logger
    QLabel* m_site;
    ProgressPicture* m_bar;
    Scene* m_scene;
    QTimer* m_timer;
    std::array<Block, BlockCount> m_blocks;
    bool m_isLoaded = true;
};

} // namespace zan::display
