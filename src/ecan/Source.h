#pragma once

#include <QDateTime>
#include <QString>

#include <memory>

namespace zan::ecan {

class Restrictions;
class RestrictionsPage;

/// What an address is expected to hold.
enum class Kind : unsigned char { Document, Page };

/// What is known of an address at this moment.
struct Answer
{
    enum class State : unsigned char {
        UnderWay, ///< nothing yet
        Failed,   ///< it could not be had, or held something else
        Here,
    };
    State state = State::Failed;
    std::shared_ptr<const Restrictions> document; ///< of Kind::Document that is here
    std::shared_ptr<const RestrictionsPage> page; ///< of Kind::Page that is here
};

/// Where restriction data comes from. Labels ask at each scan, so nothing here ever waits: an address that is asked for
/// is fetched beside the user interface.
class Source
{
public:
    virtual ~Source() = default;
    /// The server of the web service, as isHost() takes it; empty for none.
    virtual QString host() const = 0;
    /// What is known of an address. A fetch is begun where one is due.
    virtual Answer ask(Kind kind, const QString& address) = 0;
    /// The answer that is here was of no use to who asked: it counts as a failure, and the next fetch waits as long.
    virtual void wasOfNoUse(Kind kind, const QString& address) noexcept = 0;
    /// The computer's own time.
    virtual QDateTime now() const = 0;
};

} // namespace zan::ecan
