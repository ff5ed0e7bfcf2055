#include "halyard/UnavailableDriver.h"

namespace zan::halyard {

UnavailableDriver::UnavailableDriver(QString reason)
    : m_reason(std::move(reason))
{}

DriverResult UnavailableDriver::refusal() const
{
    return {DriverStatus::Broken, m_reason};
}

DriverResult UnavailableDriver::open(const TextProgress&, CancelToken&)
{
    return refusal();
}

DriverResult UnavailableDriver::readBlock(std::int32_t, std::int32_t, QByteArray&, CancelToken&)
{
    return refusal();
}

DriverResult UnavailableDriver::writeBlock(std::int32_t, const QByteArray&, CancelToken&)
{
    return refusal();
}

DriverResult UnavailableDriver::program(const PercentProgress&, CancelToken&)
{
    return refusal();
}

DriverResult UnavailableDriver::unload(const RecordSink&, const PercentProgress&, CancelToken&)
{
    return refusal();
}

} // namespace zan::halyard
