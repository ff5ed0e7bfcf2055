#pragma once

#include "wrappers/BenchControl.h"

namespace zan::wrappers {

/// Wrapper of a graph. It keeps what properties by name cannot hold: which channels are shown (the node's FILTER) and
/// the limit lines, which stand in the node alone and reach the graph with the next records.
///
/// Of its live control it needs a member Filter: an object with DataSource (Nothing while there is none), Channels
/// (an array), Enabled(number) to read and write, and Reset.
class ZanGraphControl : public BenchControl
{
public:
    /// A read of a missing one creates it; 0 and the empty text are kept as text.
    double UpperLimitLine() const;
    void setUpperLimitLine(double position);
    double LowerLimitLine() const;
    void setLowerLimitLine(double position);
    QString UpperLimitLabel() const;
    void setUpperLimitLabel(const QString& label);
    QString LowerLimitLabel() const;
    void setLowerLimitLabel(const QString& label);

    void UpdateNode() override;
    const binding::MemberTable& members() const override;

protected:
    void loadLive(binding::Object& control) override;
    void loadFont(const document::Node& fontNode, binding::Object& font) override;
    void loadRest() override;

private:
    Ref<binding::Object> filter() const;
    void storeFilter();
};

} // namespace zan::wrappers
