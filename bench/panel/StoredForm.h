#pragma once

#include <QString>
#include <QWidget>

#include <memory>

/// The same labels as a stored form of the toolkit, for comparison.
namespace zan::bench {

/// Writes a form file with so many labels; ends the program when it cannot.
void writeForm(const QString& path, int labels);

/// Whether this program was built with the toolkit's loader of forms.
bool canLoadForms() noexcept;

/// Loads a form with the toolkit's own loader; ends the program when it cannot.
std::unique_ptr<QWidget> loadForm(const QString& path);

} // namespace zan::bench
