#include "StoredForm.h"

#include "BenchSite.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>

#ifdef ZAN_WITH_UI_LOADER
#include <QUiLoader>
#endif

namespace zan::bench {

void writeForm(const QString& path, int labels)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::exit(1);
    }
    QTextStream out(&file);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n <class>Form</class>\n"
           " <widget class=\"QWidget\" name=\"Form\">\n";
    for (int i = 0; i < labels; ++i)
        out << "  <widget class=\"QLabel\" name=\"label_" << i + 1
            << "\">\n   <property name=\"geometry\"><rect><x>" << (i % Columns) * LabelWidth << "</x><y>"
            << (i / Columns) * LabelHeight << "</y><width>" << LabelWidth << "</width><height>" << LabelHeight
            << "</height></rect></property>\n   <property name=\"text\"><string>0.00</string></property>\n"
               "  </widget>\n";
    out << " </widget>\n</ui>\n";
}

#ifdef ZAN_WITH_UI_LOADER

bool canLoadForms() noexcept
{
    return true;
}

std::unique_ptr<QWidget> loadForm(const QString& path)
{
    QFile file(path);
    std::unique_ptr<QWidget> form;
    if (file.open(QIODevice::ReadOnly))
        form.reset(QUiLoader().load(&file));
    if (!form) {
        std::fprintf(stderr, "cannot load %s\n", qPrintable(path));
        std::exit(1);
    }
    return form;
}

#else

bool canLoadForms() noexcept
{
    return false;
}

std::unique_ptr<QWidget> loadForm(const QString&)
{
    return std::make_unique<QWidget>();
}

#endif

} // namespace zan::bench
