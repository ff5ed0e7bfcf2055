#include "zanbench/EditKeeper.h"

#include <QFile>
#include <QLocale>

namespace zan::host {

namespace {

const QString RestoreMeans = QStringLiteral(
    "The program ended before they were saved. Restore brings them back, to be looked at and saved; Discard "
    "loses them for good.");
const QString ChangedSince = QStringLiteral(
    "\n\nThe file has been changed by somebody else since then. Those changes are not among the restored edits; "
    "saving will ask before it overwrites them.");

/// "21 November 2026, 14:03:12", in the time of the user's place.
QString timeText(const QDateTime& time)
{
    return QLocale::c().toString(time.toLocalTime(), QStringLiteral("d MMMM yyyy, HH:mm:ss"));
}

/// Whether the file has been saved with these very edits, and the program ended before it could put them away.
bool isSaved(const KeptEdits& edits, const trellis::SchemeFile& saved)
{
    return trellis::FileStamp::of(edits.content) == saved.stamp();
}

void putAway(FoundEdits found, const EditsPlace& place)
{
    EditsFile file(place);
    file.adopt(std::move(found));
    file.drop();
}

} // namespace

EditKeeper::EditKeeper(EditsPlace place)
    : m_file(std::move(place))
{}

EditKeeper::Offer EditKeeper::offer(const trellis::SchemeFile& saved, const QString& name, HostDialogs& dialogs)
{
    Offer offer;
    const auto refuse = [&](const FoundEdits& found, const QString& problem) {
        offer.notes.append(QStringLiteral("Unsaved edits of %1 cannot be restored: %2. They lie in %3.")
                               .arg(name, problem, found.file));
    };
    for (FoundEdits& found : findEdits(m_file.place())) {
        if (found.state == FoundEdits::State::InUse) {
            offer.notes.append(QStringLiteral("%1 is being edited in another window of this program.").arg(name));
            continue;
        }
        if (found.state == FoundEdits::State::Refused) {
            refuse(found, found.problem);
            continue;
        }
        if (isSaved(found.edits, saved)) {
            putAway(std::move(found), m_file.place());
            continue;
        }
        const trellis::OpenResult read =
            trellis::SchemeFile::fromText(saved.path(), found.edits.content, found.edits.base);
        if (!read) {
            refuse(found, QStringLiteral("they are no scheme"));
            continue;
        }
        const QString question = QStringLiteral("%1 has edits that were not saved. The last one was made on %2.")
                                     .arg(name, timeText(found.edits.time));
        const bool isChanged = found.edits.base != saved.stamp();
        const HostDialogs::Edits answer =
            dialogs.askEdits(question, isChanged ? RestoreMeans + ChangedSince : RestoreMeans);
        if (answer == HostDialogs::Edits::Discard) {
            putAway(std::move(found), m_file.place());
            continue;
        }
        if (answer == HostDialogs::Edits::Restore) {
            offer.restored = read.scheme;
            m_lastEdit = found.edits.time;
            m_kept = trellis::FileStamp::of(found.edits.content);
            m_file.adopt(std::move(found));
        }
        break; // one answer holds for what is older
    }
    return offer;
}

QString EditKeeper::keep(const trellis::SchemeFile& scheme)
{
    KeptEdits edits{scheme.path(), m_lastEdit, scheme.stamp(), scheme.text()};
    if (!edits.time.isValid())
        edits.time = QDateTime::currentDateTimeUtc();
    const trellis::FileStamp stamp = trellis::FileStamp::of(edits.content);
    if (!m_file.file().isEmpty() && stamp == m_kept && QFile::exists(m_file.file()))
        return {};
    const QString problem = m_file.write(edits);
    if (problem.isEmpty())
        m_kept = stamp;
    const bool isNew = problem != std::exchange(m_problem, problem);
    return problem.isEmpty() || !isNew
               ? QString()
               : QStringLiteral(
                     "Edits are not safe from a crash until they are saved: they cannot be kept beside the "
                     "scheme (%1).")
                     .arg(problem);
}

QString editsNote(const EditsPlace& place, const trellis::SchemeFile& saved)
{
    for (const FoundEdits& found : findEdits(place))
        if (found.state == FoundEdits::State::Usable && !isSaved(found.edits, saved))
            return QStringLiteral("%1 is used as it was saved, without the unsaved edits of %2; opening it in the "
                                  "window offers them.")
                .arg(saved.path(), timeText(found.edits.time));
    return {};
}

} // namespace zan::host
