#pragma once

#include "site/Logger.h"
#include "trellis/SchemeFile.h"

#include <QString>

/// A site for measuring: a scheme file of so many bound labels, and a logger that says what it is told.
namespace zan::bench {

/// Labels stand in a grid of this many columns.
inline constexpr int Columns = 100;
inline constexpr int LabelWidth = 40;  // pixels
inline constexpr int LabelHeight = 16; // pixels

/// Writes a scheme with one window "MAIN" of bound labels and returns nothing; ends the program when it cannot.
void writeScheme(const QString& path, int labels);

class BenchLink : public site::Link
{
public:
    site::LinkState State() const override { return site::LinkState::Connected; }
    void Connect() override {}
    void Disconnect() override {}
};

class BenchLogger : public site::Logger
{
public:
    explicit BenchLogger(values::Ref<site::Scheme> scheme)
        : m_scheme(std::move(scheme))
    {}
    values::Ref<site::Link> Link() override { return m_link; }
    values::Ref<site::Scheme> Scheme() override { return m_scheme; }
    values::Ref<site::Live> Live() override { return {}; }
    std::int32_t Actions() const override { return 0; }
    void AddAction(std::int32_t) override {}
    void RemoveActions(std::int32_t) override {}
    values::Ref<site::Channel> createChannel() override { return {}; }

private:
    values::Ref<site::Scheme> m_scheme;
    values::Ref<BenchLink> m_link = values::make<BenchLink>();
};

} // namespace zan::bench
