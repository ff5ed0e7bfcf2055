#pragma once

#include <QWidget>

#include <cstdint>
#include <memory>

namespace zan::bench {

/// The plotting widget as it comes, with every record in it.
class BarePlot
{
public:
    BarePlot(std::int64_t series, std::int64_t records, QSize size);
    ~BarePlot();
    /// Shows the records from one to another and draws them.
    void show(double first, double end);
    void append(std::int64_t record);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace zan::bench
