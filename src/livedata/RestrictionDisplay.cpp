#include "livedata/RestrictionDisplay.h"

#include "ecan/Address.h"
#include "ecan/ECANScraper.h"
#include "ecan/ECANService.h"
#include "livedata/LiveTarget.h"
#include "values/Convert.h"

#include <QScopeGuard>

namespace zan::livedata {

using values::Name;
using values::Variant;
using wrappers::iBenchControl;

namespace {

const Name CaptionName("Caption");
const QString LineBreak = QStringLiteral("\r\n");
const QString Head = QStringLiteral("ECAN @ ");

struct SourceRow
{
    QStringView prefix; ///< of the bind text, compared exactly
    void (*update)(iBenchControl& control, ecan::Source& source);
};

constexpr SourceRow sources[]{
    {u"ECANSVC|", UpdateECANService},
    {u"ECANSCRAPE|", UpdateECANScrape},
};

const SourceRow* sourceOf(QStringView bindText)
{
    for (const SourceRow& row : sources) {
        if (bindText.startsWith(row.prefix))
            return &row;
    }
    return nullptr;
}

/// The two fields behind the first one. Raises 9 when there are fewer.
struct Fields
{
    explicit Fields(const QString& bindText)
    {
        const QStringList parts = bindText.split(u'|');
        if (parts.size() < 3)
            values::raise(values::ErrorNumber::SubscriptOutOfRange);
        site = parts[1];
        second = parts[2];
    }
    QString site;
    QString second;
};

void show(const iBenchControl& control, const QString& caption)
{
    liveTarget(control)->put(CaptionName, Variant(caption));
}

QString restrictionText(const ecan::ECANService& service, std::int32_t site, std::int16_t band)
{
    double flow = 0;
    service.AssessedFlow(site, flow);
    const QString flowText = flow == -1 ? QStringLiteral("N/A") : values::toText(Variant(flow));
    Variant allocated;
    service.Allocation(QString::number(site), band, allocated);
    const QString allocation = QString::number(values::toInteger(allocated));
    return Head + service.Results().Item(1).LastUpdate() + LineBreak + QStringLiteral("Assessed Flow=") + flowText +
           LineBreak + QStringLiteral("Allocation=") + allocation + u'%';
}

void updateFromService(iBenchControl& control, ecan::Source& source)
{
    if (control.Updated())
        return;
    const Fields fields(control.BindTo());
    const std::int32_t site = values::toLong(Variant(values::val(fields.site)));
    const std::int16_t band = values::toInteger(Variant(values::val(fields.second)));
    const QString address = ecan::serviceAddress(source.host(), fields.site);
    ecan::ECANService service(source);
    service.setURL(address);
    if (service.isUnderWay())
        return;
    if (!service.Connected()) {
        show(control, QStringLiteral("Error connecting to ECAN Server"));
        return;
    }
    // A document that leaves the label without its text is fetched anew later, no sooner than after a failure.
    auto noUse = qScopeGuard([&] { source.wasOfNoUse(ecan::Kind::Document, address); });
    show(control, service.HasRestrictions() ? restrictionText(service, site, band)
                                            : Head + source.now().toString(QStringLiteral("yyyy-MM-dd HH:mm")) +
                                                  LineBreak + QStringLiteral("No restrictions"));
    control.setUpdated(true);
    noUse.dismiss();
}

void updateFromPage(iBenchControl& control, ecan::Source& source)
{
    if (control.Updated())
        return;
    const Fields fields(control.BindTo());
    ecan::ECANScraper scraper(source);
    QString text;
    auto noUse = qScopeGuard([&] { source.wasOfNoUse(ecan::Kind::Page, fields.second); });
    if (!scraper.LoadPage(fields.second)) {
        if (scraper.isUnderWay())
            return;
        text = QStringLiteral("Error loading page");
    } else if (!scraper.FindSite(fields.site)) {
        text = QStringLiteral("Error finding site in page");
    } else {
        text = scraper.Status() + QStringLiteral(" Flow (m3): ") + scraper.Flow() + LineBreak +
               QStringLiteral("From ECAN @ ") + scraper.Stamp();
        control.setUpdated(true);
        noUse.dismiss();
    }
    show(control, text);
}

} // namespace

void UpdateECANService(iBenchControl& control, ecan::Source& source)
{
    values::attempt([&] { updateFromService(control, source); });
}

void UpdateECANScrape(iBenchControl& control, ecan::Source& source)
{
    values::attempt([&] { updateFromPage(control, source); });
}

void UpdateRestrictions(iBenchControl& control, const wrappers::BenchControls& controls)
{
    const SourceRow* row = sourceOf(control.BindTo());
    if (row && control.past()) {
        show(control, NotStored); // nobody keeps what a source has said
        return;
    }
    if (ecan::Source* source = row ? controls.restrictions() : nullptr)
        row->update(control, *source);
}

bool WaitsForRestrictions(const iBenchControl& control)
{
    return !control.Updated() && !control.Channel() && sourceOf(control.BindTo());
}

} // namespace zan::livedata
