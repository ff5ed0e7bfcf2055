#pragma once

#include "support/ErrorOf.h"
#include "support/FakePanel.h"
#include "support/FakeSite.h"
#include "wrappers/BenchControls.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace zan::test {

using document::Node;
using values::ErrorNumber;
using values::make;
using values::Name;
using values::Ref;
using values::Variant;
using wrappers::BenchControls;
using wrappers::iBenchControl;

/// Live data that remembers whom it was to update.
class RecordingLiveData : public wrappers::LiveData
{
public:
    std::vector<QString> updated;
    std::vector<int> states;
    QString failsAt;
    std::function<void(iBenchControl&)> onUpdate;

    void update(iBenchControl& control, BenchControls&) override
    {
        updated.push_back(control.Key());
        if (onUpdate)
            onUpdate(control);
        if (!failsAt.isEmpty() && control.Key() == failsAt)
            values::raise(ErrorNumber::TypeMismatch);
    }
    void followLink(iBenchControl& control, int state) override
    {
        states.push_back(state);
        if (control.Key() == failsAt)
            values::raise(ErrorNumber::TypeMismatch);
    }
    void feedRecords(iBenchControl& control, BenchControls& controls) override { update(control, controls); }
};

/// A list of fake controls.
class Collection : public testing::Test
{
protected:
    Collection()
    {
        controls->setWindow(&window);
        controls->setLiveData(&live);
    }
    void load(const char* xml) { controls->setXMLNode(node = fake::tree(xml)); }
    QString keys() const
    {
        QStringList list;
        for (int place = 1; place <= controls->Count(); ++place)
            list << controls->Control(Variant(place))->Key();
        return list.join(u' ');
    }
    fake::FakePanelWindow window;
    RecordingLiveData live;
    Node node;
    Ref<BenchControls> controls = make<BenchControls>();
};

inline constexpr const char* ThreeLabels =
    "<WINDOW><CONTROL><TYPE>VB.Label</TYPE><KEY>mine</KEY></CONTROL><CONTROL><TYPE>VB.Label</TYPE></CONTROL>"
    "<CONTROL><TYPE>VB.Label</TYPE></CONTROL></WINDOW>";

} // namespace zan::test
