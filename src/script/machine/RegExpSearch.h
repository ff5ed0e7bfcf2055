#pragma once

#include <QRegularExpression>
#include <QString>

#include <functional>
#include <memory>

namespace zan::script {

/// A pattern in the forms that a search needs, made once.
class RegExpPattern
{
public:
    RegExpPattern(QString pattern, QRegularExpression::PatternOptions options);

    /// The pattern with few steps allowed at each place of a text.
    const QRegularExpression& quick() const noexcept { return m_quick; }
    /// The pattern behind a gap of up to so many places less one, with many steps allowed for all of them together.
    const QRegularExpression& patient(qsizetype places);

private:
    QString m_pattern;
    QRegularExpression::PatternOptions m_options;
    QRegularExpression m_quick;
    QRegularExpression m_patient;
    qsizetype m_places = 0;
};

/// Looks for the matches of a pattern in a text, in steps of which none takes long: after each the caller is told and
/// may end the search by an error. A hostile pattern, which would take for ever at one place, is error 28.
class RegExpSearch
{
public:
    /// Told after each step at how many places it has looked; may raise, and may run code that changes everything.
    using Progress = std::function<void(qsizetype places)>;

    RegExpSearch(std::shared_ptr<RegExpPattern> pattern, const QString& text, Progress progress);

    /// The first match that begins behind the last one; one without a match when there is none.
    QRegularExpressionMatch next();

private:
    QRegularExpressionMatch from(qsizetype place);
    QRegularExpressionMatch patiently(qsizetype place);
    qsizetype characterAt(qsizetype place) const;

    std::shared_ptr<RegExpPattern> m_pattern;
    QString m_text;
    Progress m_progress;
    qsizetype m_place = 0; ///< where the next match may begin
};

} // namespace zan::script
