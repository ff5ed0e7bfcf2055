#pragma once

#include "binding/PropertyBag.h"

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QStringList>

namespace zan::host {

/// What the host remembers from one start to the next: its window, recent files, and for each panel the property
/// bag that its control wrote.
class Settings
{
public:
    static constexpr int MostRecentFiles = 10;

    /// The user's own settings.
    Settings();
    /// Settings in a file of their own.
    explicit Settings(const QString& file);

    /// A folder of the user's own for edits that have not been saved and cannot be kept beside their scheme.
    QString editsFolder() const;

    QByteArray geometry() const;
    QByteArray windowState() const;
    void setWindow(const QByteArray& geometry, const QByteArray& state);

    bool connectsOnOpening() const;
    void setConnectsOnOpening(bool connects);

    /// Help in laying out panels: guides while something is dragged, keys that move the current control.
    bool showsGuides() const;
    void setShowsGuides(bool show);
    bool editsByKeyboard() const;
    void setEditsByKeyboard(bool edit);

    /// The server that panels ask for irrigation restrictions; empty for none, and when what is stored names none.
    QString ecanHost() const;
    void setEcanHost(const QString& host);

    /// Zoom of the panels in percent; 0 to fit them into the window.
    int zoom() const;
    void setZoom(int percent);

    /// Absolute paths, the latest first.
    QStringList recentFiles() const;
    /// Puts a file first, once.
    void addRecentFile(const QString& file);
    void removeRecentFile(const QString& file);
    /// The window of a scheme that was shown last; empty when none was.
    QString lastWindow(const QString& scheme) const;
    void setLastWindow(const QString& scheme, const QString& key);

    /// The bag stored for a panel; nothing when there is none, or what is there cannot be read.
    std::optional<binding::PropertyBag> bag(const QString& scheme, const QString& window) const;
    void setBag(const QString& scheme, const QString& window, const binding::PropertyBag& bag);

private:
    mutable QSettings m_settings;
};

} // namespace zan::host
