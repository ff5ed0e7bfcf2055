#include "site/Logger.h"

#include "binding/MemberTable.h"
#include "site/FormattedRecords.h"
#include "site/IndexEnumerator.h"

namespace zan::site {

using binding::MemberTable;
using binding::method;
using binding::readOnly;

const MemberTable& Link::members() const
{
    return binding::table([] {
        return MemberTable("Link", nullptr,
                           {
                               readOnly<&Link::State>("State").asDefault(),
                               method<&Link::Connect>("Connect"),
                               method<&Link::Disconnect>("Disconnect"),
                           });
    });
}

namespace {

const MemberTable& recordMembers()
{
    return binding::table([] {
        return MemberTable("LogRecords", nullptr,
                           {
                               readOnly<&LogRecords::rowCount>("RowCount"),
                               readOnly<&LogRecords::columnCount>("ColumnCount"),
                               readOnly<&LogRecords::columnLabel>("ColumnLabel"),
                               readOnly<&LogRecords::columnUnits>("ColumnUnits"),
                               readOnly<&LogRecords::cell>("Cell").asDefault(),
                           });
    });
}

} // namespace

const MemberTable& LogRecords::members() const
{
    return recordMembers();
}

const MemberTable& FormattedRecords::members() const
{
    return binding::table([] {
        return MemberTable("FormattedRecords", &recordMembers(),
                           {
                               readOnly<&FormattedRecords::columnFormat>("ColumnFormat"),
                           });
    });
}

const MemberTable& LogBuffer::members() const
{
    return binding::table([] {
        return MemberTable("LogBuffer", nullptr,
                           {
                               readOnly<&LogBuffer::RecordCount>("RecordCount"),
                               readOnly<&LogBuffer::Records>("Records"),
                           });
    });
}

const MemberTable& LogBuffers::members() const
{
    return binding::table([] {
        return MemberTable("LogBuffers", nullptr,
                           {
                               readOnly<&LogBuffers::Count>("Count"),
                               readOnly<&LogBuffers::Item>("Item").asDefault(),
                           });
    });
}

std::unique_ptr<binding::Enumerator> LogBuffers::enumerate()
{
    return std::make_unique<IndexEnumerator<LogBuffers>>(*this);
}

const MemberTable& Live::members() const
{
    return binding::table([] {
        return MemberTable("Live", nullptr,
                           {
                               readOnly<&Live::Buffers>("Buffers"),
                               readOnly<&Live::History>("History"),
                               method<&Live::ReadMemory>("ReadMemory"),
                               method<&Live::WriteChannel>("WriteChannel"),
                           });
    });
}

const MemberTable& Logger::members() const
{
    return binding::table([] {
        return MemberTable("Logger", nullptr,
                           {
                               readOnly<&Logger::Link>("Link"),
                               readOnly<&Logger::Scheme>("Scheme"),
                               readOnly<&Logger::Live>("Live"),
                               readOnly<&Logger::Actions>("Actions"),
                               method<&Logger::AddAction>("AddAction"),
                               method<&Logger::RemoveActions>("RemoveActions"),
                               method<&Logger::createChannel>("CreateChannel"),
                           });
    });
}

} // namespace zan::site
