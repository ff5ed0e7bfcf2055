// A whole host: opens a scheme, connects its logger and shows one of its windows.
//
//     minimal ../weir.scheme Overview

#include "halyard/LoggerFactory.h"
#include "trellis/SchemeFile.h"
#include "window/BenchWindow.h"

#include <QApplication>
#include <QDebug>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();

    const auto opened = zan::trellis::SchemeFile::open(arguments.value(1));
    if (!opened) {
        qCritical().noquote() << opened.error.text();
        return 1;
    }
    const auto made = zan::halyard::createLogger(opened.scheme->loggerUri(), opened.scheme);
    if (!made.logger) {
        qCritical().noquote() << made.error;
        return 1;
    }

    zan::window::BenchWindow panel;
    panel.InitProperties();
    panel.setLogger(made.logger);
    panel.LoadWindow(arguments.value(2, QStringLiteral("Overview")));
    panel.resize(1000, 640);
    panel.show();
    made.logger->AddAction(zan::site::LiveAction);
    made.logger->Link()->Connect();
    return QApplication::exec();
}
