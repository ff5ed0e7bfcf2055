#pragma once

#include "ecan/RestrictionsPage.h"
#include "ecan/Source.h"

namespace zan::ecan {

/// A web page with the restrictions of many sites, as a label reads it. Nothing waits: while the page is fetched, it
/// isUnderWay() and not loaded.
class ECANScraper
{
public:
    /// The source must outlive the scraper.
    explicit ECANScraper(Source& source)
        : m_source(source)
    {}

    /// Asks for a page; true when it is here and could be read.
    bool LoadPage(const QString& url);
    bool isUnderWay() const { return m_answer.state == Answer::State::UnderWay; }
    /// Looks for a site in the page; from then on the texts below are those of its row, or empty without one.
    bool FindSite(const QString& site);
    QString Status() const { return m_row ? m_row->status : QString(); }
    QString Flow() const { return m_row ? m_row->flow : QString(); }
    QString Stamp() const { return m_row ? m_row->stamp : QString(); }

private:
    Source& m_source;
    Answer m_answer;
    const SiteRow* m_row = nullptr; ///< of the page
};

} // namespace zan::ecan
