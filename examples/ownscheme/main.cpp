// A scheme of your own: its text lies where the host wants it, here in the settings of the user.
//
//     ownscheme

#include "document/XmlText.h"
#include "halyard/LoggerFactory.h"
#include "trellis/StoredWindows.h"
#include "values/RuntimeError.h"
#include "window/BenchWindow.h"

#include <QApplication>
#include <QSettings>

namespace {

using zan::values::Ref;

const char* const FirstText =
    "<SCHEME><NAME>Pump</NAME><WINDOW><KEY>Pump</KEY>"
    "<CHANNEL><KEY>FLOW</KEY><LABEL>Flow</LABEL><FORMAT>0.0</FORMAT><BASEADDRESS>100</BASEADDRESS></CHANNEL>"
    "<CONTROL><TYPE>VB.Label</TYPE><LEFT>600</LEFT><TOP>600</TOP><BINDTO>Pump|FLOW</BINDTO></CONTROL>"
    "</WINDOW></SCHEME>";

/// The windows and channels are those of the scheme store, over a tree that this class reads and writes.
class SettingsScheme : public zan::site::Scheme
{
public:
    SettingsScheme()
    {
        const QString text = QSettings().value(QStringLiteral("scheme"), QString::fromUtf8(FirstText)).toString();
        const zan::document::ParseResult parsed = zan::document::parseXml(text);
        if (!parsed)
            throw zan::values::RuntimeError(zan::values::ErrorNumber::InvalidCall, parsed.error.message);
        m_document = parsed.document;
        m_windows = zan::values::make<zan::trellis::StoredWindows>(m_document.documentElement());
    }

    QString Name() const override { return m_document.documentElement().child(zan::values::Name("NAME")).text(); }
    void setName(const QString& name) override
    {
        m_document.documentElement().child(zan::values::Name("NAME")).setText(name);
    }
    Ref<zan::site::SchemeWindows> Windows() override { return m_windows; }
    /// Panels mark the tree with CHANGED when they write to it; the mark is taken out before the text is stored.
    void Save() override
    {
        const zan::document::Node root = m_document.documentElement();
        for (const zan::document::Node& mark : root.children(zan::values::Name("CHANGED")))
            root.removeChild(mark);
        QSettings settings;
        settings.setValue(QStringLiteral("scheme"), QString::fromUtf8(zan::document::toXml(m_document)));
        settings.sync();
        if (settings.status() != QSettings::NoError)
            zan::values::raise(zan::values::ErrorNumber::PathFileAccess,
                               QStringLiteral("The scheme could not be stored in the settings."));
    }

private:
    zan::document::Node m_document;
    Ref<zan::site::SchemeWindows> m_windows;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ZanBench examples"));
    QApplication::setApplicationName(QStringLiteral("ownscheme"));
    const Ref<zan::site::Scheme> scheme = zan::values::make<SettingsScheme>();
    const auto made = zan::halyard::createLogger(QStringLiteral("sim:?seed=7"), scheme);

    zan::window::BenchWindow panel;
    panel.InitProperties();
    panel.setLogger(made.logger);
    panel.LoadWindow(QStringLiteral("Pump"));
    panel.resize(400, 240);
    panel.show();
    made.logger->AddAction(zan::site::LiveAction);
    made.logger->Link()->Connect();
    const int code = QApplication::exec();
    scheme->Save();
    return code;
}
