#pragma once

#include "surface/forms/RecordingForms.h"

namespace zan::host {

class RunReport;

/// Boxes and forms of a run without a screen: recorded, answered at once, and each of them printed.
class HeadlessForms : public surface::RecordingForms
{
public:
    /// The report must outlive the forms.
    explicit HeadlessForms(RunReport& report)
        : m_report(report)
    {}

    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override;
    std::optional<QString> inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                    const QString& text) override;
    void showModal(QDialog& form) override;
    void showForm(QWidget* owner, surface::ModalForm& form) override;

private:
    RunReport& m_report;
};

} // namespace zan::host
