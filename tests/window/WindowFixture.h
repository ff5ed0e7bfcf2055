#pragma once

#include "document/XMLOps.h"
#include "document/XmlText.h"
#include "support/ErrorOf.h"
#include "support/FakeSite.h"
#include "surface/forms/RecordingForms.h"
#include "surface/host/LiveControl.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "window/ControlTypes.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace zan::window {

using test::errorOf;

/// A panel with a logger and a scheme that a test fills.
class WindowTest : public testing::Test
{
protected:
    explicit WindowTest(wrappers::ControlTypes types = controlTypes())
        : panel(std::make_unique<BenchWindow>(types))
    {
        panel->setForms(&forms);
        panel->InitProperties();
        panel->setShowSiteMap(false); // tests of the map show it
        panel->setLogger(logger);
        QObject::connect(panel.get(), &BenchWindow::runtimeError, panel.get(),
                         [this](int number, const QString&) { errors.push_back(number); });
    }

    /// Puts elements into the window of this key.
    document::Node fill(const char* key, const char* xml)
    {
        const document::Node root = logger->scheme->window(QString::fromLatin1(key))->XML();
        document::Node parsed =
            document::XMLOps::LoadDocument(QStringLiteral("<X>%1</X>").arg(QString::fromUtf8(xml)));
        while (const document::Node child = parsed.firstChildElement())
            root.appendChild(child);
        return root;
    }
    document::Node nodeOf(const char* key) { return logger->scheme->window(QString::fromLatin1(key))->XML(); }
    bool isChanged() { return bool(logger->scheme->windows->root.child(values::Name("CHANGED"))); }
    values::Ref<surface::LiveControl> live(int place)
    {
        return values::Ref<surface::LiveControl>(dynamic_cast<surface::LiveControl*>(
            panel->Controls()->Control(binding::Variant(place))->Control().get()));
    }
    QString property(int place, const char* name) { return values::toText(live(place)->get(values::Name(name))); }
    surface::RecordingForms forms;
    values::Ref<fake::FakeLogger> logger = values::make<fake::FakeLogger>();
    std::unique_ptr<BenchWindow> panel;
    std::vector<int> errors;
};

} // namespace zan::window
