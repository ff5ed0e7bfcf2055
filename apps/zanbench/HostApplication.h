#pragma once

#include "zanbench/Commands.h"

#include <QApplication>

#include <functional>

namespace zan::host {

/// The toolkit's application with an event boundary: an exception that leaves an event handler is told, and goes no
/// further into the toolkit.
class HostApplication : public QApplication
{
public:
    using Report = std::function<void(const QString& message)>;

    explicit HostApplication(ProcessArguments process);
    /// Who hears of failed events instead of the standard error.
    void setReport(Report report) { m_report = std::move(report); }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    Report m_report;
};

} // namespace zan::host
