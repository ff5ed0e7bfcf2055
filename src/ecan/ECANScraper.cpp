#include "ecan/ECANScraper.h"

namespace zan::ecan {

bool ECANScraper::LoadPage(const QString& url)
{
    m_row = nullptr;
    m_answer = m_source.ask(Kind::Page, url);
    return m_answer.state == Answer::State::Here;
}

bool ECANScraper::FindSite(const QString& site)
{
    m_row = m_answer.page ? m_answer.page->find(site) : nullptr;
    return m_row != nullptr;
}

} // namespace zan::ecan
