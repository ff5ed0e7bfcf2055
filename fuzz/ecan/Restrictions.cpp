// Any bytes as a restrictions document that a server has sent, the first line being its Content-Type: refused, or a
// document whose records can be asked by whatever a label is bound to.

#include "ecan/ECANService.h"

#include "fuzz/support/Require.h"

#include <cmath>
#include <cstdint>

using namespace zan;
using fuzz::require;

namespace {

/// Has the document that it was made with, at every address.
class OneDocument : public ecan::Source
{
public:
    explicit OneDocument(std::shared_ptr<const ecan::Restrictions> document)
        : m_document(std::move(document))
    {}
    QString host() const override { return {}; }
    ecan::Answer ask(ecan::Kind, const QString&) override
    {
        return {ecan::Answer::State::Here, m_document, nullptr};
    }
    void wasOfNoUse(ecan::Kind, const QString&) noexcept override {}
    QDateTime now() const override { return {}; }

private:
    std::shared_ptr<const ecan::Restrictions> m_document;
};

void ask(const ecan::ECANService& service, const QString& site)
{
    double flow = 0;
    service.AssessedFlow(site.toInt(), flow);
    require(std::isfinite(flow), "a flow is a number");
    for (const std::int16_t band : {std::int16_t(0), std::int16_t(1), std::int16_t(32767)}) {
        values::Variant allocation;
        service.Allocation(site, band, allocation);
        require(allocation.isNull() || allocation.kind() == values::Kind::Double,
                "an allocation is a number or Null");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype line = input.indexOf('\n');
    const auto document = ecan::Restrictions::read({input.mid(line + 1), input.left(std::max<qsizetype>(line, 0))});
    if (!document)
        return 0;
    OneDocument source(document);
    ecan::ECANService service(source);
    service.setURL(QStringLiteral("http://e/1"));
    require(service.Connected(), "a document that was read is connected");
    const ecan::ECANResults results = service.Results();
    require(results.Count() <= std::int32_t(ecan::Restrictions::MostRecords),
            "there are no more records than are read");
    require(service.HasRestrictions() == (results.Count() > 0), "records are restrictions");
    for (std::int32_t place = 1; place <= results.Count(); ++place)
        require(results.Item(place).LastUpdate().size() <= 256, "a time has a sensible length");
    for (const char* site : {"0", "66401", "A 7", ""})
        ask(service, QString::fromLatin1(site));
    return 0;
}
