#pragma once

#include "site/Logger.h"
#include "surface/host/UsesForms.h"
#include "surface/host/WidgetControl.h"
#include "zandata/data/LogTime.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QTableView;

namespace zan::zandata {

class RecordModel;

/// The log buffer of a logger as a table: its history where it keeps one, else the records of its first buffer. It
/// follows the logger by itself.
class ENTViewer final : public surface::WidgetControl, public surface::UsesForms
{
public:
    ENTViewer();
    ~ENTViewer() override;
    const binding::MemberTable& members() const override;

    const values::Ref<site::Logger>& Logger() const { return m_logger; }
    /// Shows the records of this logger from now on; Nothing shows none.
    void setLogger(const values::Ref<site::Logger>& logger);
    bool NewestFirst() const;
    void setNewestFirst(bool isNewestFirst);

    /// The rows as they are shown. Lives as long as the control.
    RecordModel& model() const { return *m_model; }
    /// Looks at the logger's records now.
    void Refresh();
    /// Runs after a record has come: a history that was handed it a moment ago has it then at the latest.
    const QTimer& nextLook() const { return m_nextLook; }
    /// Brings the first record at a moment or after it into sight. False for an empty table.
    bool find(HistoryTime moment);
    /// Asks for a moment and finds it.
    void askForTime();
    /// Asks for a file and writes the whole table there, with a progress box that can cancel it.
    void save();
    void copySelection();

    void setForms(const surface::FormsSource& forms) override { m_forms = forms; }
    bool keepsMouse(QPointF place) const override;
    bool keepsKey(surface::DialogKey) const override { return false; }
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Chart; }
    QString accessibleText() const override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    bool takesInput() const override { return false; }
    void syncWidget(QWidget& widget) override;

private:
    surface::HostForms* forms() const { return m_forms ? m_forms() : nullptr; }
    QTableView* table() const;
    void attend();
    void say(const QString& text);

    std::unique_ptr<RecordModel> m_model;
    values::Ref<site::Logger> m_logger;
    QObject m_context; // of the connections to the logger
    QTimer m_nextLook;
    surface::FormsSource m_forms;
};

} // namespace zan::zandata
