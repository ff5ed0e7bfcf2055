#include "BenchSite.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>

namespace zan::bench {

void writeScheme(const QString& path, int labels)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::exit(1);
    }
    QTextStream out(&file);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SCHEME><NAME>Bench</NAME><WINDOW><KEY>RTD</KEY>\n";
    for (int i = 0; i < labels; ++i)
        out << "<CHANNEL><KEY>C" << i << "</KEY><LABEL>Channel " << i
            << "</LABEL><UNITS>m</UNITS><FORMAT>0.00</FORMAT><BASEADDRESS>" << i * 2
            << "</BASEADDRESS><DATATYPE>2</DATATYPE></CHANNEL>\n";
    out << "</WINDOW><WINDOW><KEY>MAIN</KEY><CONTAINER><BACKCOLOR>-2147483633</BACKCOLOR></CONTAINER>\n";
    for (int i = 0; i < labels; ++i)
        out << "<CONTROL><TYPE>VB.Label</TYPE><KEY>@" << i + 1 << "</KEY><INDEX>" << i + 1 << "</INDEX><LEFT>"
            << (i % Columns) * LabelWidth * 15 << "</LEFT><TOP>" << (i / Columns) * LabelHeight * 15
            << "</TOP><WIDTH>" << LabelWidth * 15 << "</WIDTH><HEIGHT>" << LabelHeight * 15
            << "</HEIGHT><BACKCOLOR>-2147483633</BACKCOLOR><FORECOLOR>-2147483630</FORECOLOR>"
               "<VISIBLE>-1</VISIBLE><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS>"
               "<BINDTO>RTD|C"
            << i
            << "</BINDTO><SHOWLABELS>0</SHOWLABELS><ADDLABELSEPERATORS>0</ADDLABELSEPERATORS>"
               "<FONT><NAME>DejaVu Sans</NAME><SIZE>8.25</SIZE><WEIGHT>400</WEIGHT></FONT></CONTROL>\n";
    out << "</WINDOW></SCHEME>\n";
}

} // namespace zan::bench
