// Prints what the document costs on a panel of many controls: reading, writing, looking up, moving. Beside it what
// other readers need for the same text. Each time is the best of several runs.

#include "binding/MemberTable.h"
#include "document/LoadByName.h"
#include "document/Node.h"
#include "document/XMLOps.h"
#include "document/XmlText.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace zan::document;

namespace {

constexpr int Children = 20;
constexpr int Runs = 7;

/// A window of so many controls with twenty attributes each, as the writer lays it out.
QByteArray panelText(int controls)
{
    QByteArray xml = "<WINDOW>\n";
    for (int control = 0; control < controls; ++control) {
        xml += "  <CONTROL>\n    <TYPE>VB.Label</TYPE>\n    <KEY>Label" + QByteArray::number(control) +
               "</KEY>\n    <CAPTION>Channel " + QByteArray::number(control * 7) + " L/s</CAPTION>\n    <LEFT>" +
               QByteArray::number(control * 15 % 9000) + "</LEFT>\n";
        for (int child = 4; child < Children; ++child)
            xml += "    <ATTRIBUTE" + QByteArray::number(child) + ">" +
                   (child % 3 ? QByteArray("-1") : QByteArray::number(control * child)) + "</ATTRIBUTE" +
                   QByteArray::number(child) + ">\n";
        xml += "  </CONTROL>\n";
    }
    return xml + "</WINDOW>\n";
}

double residentMegabytes()
{
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    long pages = 0;
    if (!file || std::fscanf(file, "%*s %ld", &pages) != 1)
        std::fputs("no memory figures here\n", stderr);
    if (file)
        std::fclose(file);
    return double(pages) * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

template <class Work>
double bestMilliseconds(Work work)
{
    double best = 1e9;
    for (int run = 0; run < Runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        best = std::min(best, time.count());
    }
    return best;
}

void print(const char* what, double milliseconds)
{
    std::printf("  %-52s %9.2f ms\n", what, milliseconds);
}

/// A live object with a few of the properties that the panel's controls name.
class Live : public zan::binding::Object
{
public:
    QString Caption() const { return m_caption; }
    void setCaption(const QString& caption) { m_caption = caption; }
    float Left() const { return m_left; }
    void setLeft(float left) { m_left = left; }
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table(
            "Live", nullptr,
            {zan::binding::property<&Live::Caption, &Live::setCaption>("Caption"),
             zan::binding::property<&Live::Left, &Live::setLeft>("Left")});
        return table;
    }

private:
    QString m_caption;
    float m_left = 0;
};

void readWithStreamReader(const QByteArray& xml)
{
    QXmlStreamReader reader(xml);
    qsizetype characters = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters)
            characters += reader.text().size();
    }
    if (characters == 0)
        std::abort();
}

void measureReading(const QByteArray& xml, int controls)
{
    const double before = residentMegabytes();
    Node document = parseXml(xml).document;
    malloc_trim(0);
    const double megabytes = residentMegabytes() - before;
    const double nodes = double(controls) * (Children + 1) + 1;
    std::printf("  %-52s %9.1f MB, %.0f bytes per node\n", "memory of the tree", megabytes,
                megabytes * 1e6 / nodes);
    print("free the tree", [&] {
        const auto start = std::chrono::steady_clock::now();
        document = Node();
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }());
    print("parseXml, tree freed again", bestMilliseconds([&] {
              if (!parseXml(xml))
                  std::abort();
          }));
    print("Qt's stream reader alone, no tree", bestMilliseconds([&] { readWithStreamReader(xml); }));
}

void measureUse(const Node& document, int controls)
{
    Node root = document.documentElement();
    print("toXml", bestMilliseconds([&] { toXml(document); }));

    const Name names[] = {Name("CAPTION"), Name("ATTRIBUTE10"), Name("ATTRIBUTE19")};
    qsizetype characters = 0;
    print("three child texts of every control", bestMilliseconds([&] {
              QString text;
              for (Node control = root.firstChildElement(); control; control = control.nextSiblingElement()) {
                  for (const Name name : names) {
                      control.childText(name, text);
                      characters += text.size();
                  }
              }
          }));
    print("the same through GetAttribute", bestMilliseconds([&] {
              for (Node control = root.firstChildElement(); control; control = control.nextSiblingElement()) {
                  for (const Name name : names)
                      characters += XMLOps::GetAttribute(control, name).size();
              }
          }));
    const auto live = zan::values::make<Live>();
    print("load every control by name", bestMilliseconds([&] {
              SpecialChild special[] = {{Name("FONT"), {}}, {Name("PICTUREFILE"), {}}};
              for (Node control = root.firstChildElement(); control; control = control.nextSiblingElement())
                  loadByName(control, *live, special);
          }));
    print("take every control out, last first, and put it back", bestMilliseconds([&] {
              std::vector<Node> taken;
              taken.reserve(std::size_t(controls));
              while (const Node last = root.lastChild()) {
                  root.removeChild(last);
                  taken.push_back(last);
              }
              for (auto control = taken.rbegin(); control != taken.rend(); ++control)
                  root.appendChild(*control);
          }));
    print("write three numbers in every control", bestMilliseconds([&] {
              static int round = 0;
              ++round;
              for (Node control = root.firstChildElement(); control; control = control.nextSiblingElement()) {
                  for (const Name name : names)
                      XMLOps::SetAttribute(control, name, QString::number(round));
              }
          }));
    if (characters == 0)
        std::abort();
}

} // namespace

int main(int argc, char** argv)
{
    const int controls = argc > 1 ? std::atoi(argv[1]) : 10'000;
    const QByteArray xml = panelText(controls);
    std::printf("%d controls of %d children, %.1f MB of text\n", controls, Children, double(xml.size()) / 1e6);
    measureReading(xml, controls);
    measureUse(parseXml(xml).document, controls);
    return 0;
}
