#include "site/Logger.h"

#include "binding/MemberTable.h"
#include "site/IndexEnumerator.h"

namespace zan::site {

using binding::MemberTable;
using binding::method;
using binding::readOnly;

const MemberTable& Link::members() const
{
    static const MemberTable table("Link", nullptr,
                                   {
                                       readOnly<&Link::State>("State").asDefault(),
                                       method<&Link::Connect>("Connect"),
                                       method<&Link::Disconnect>("Disconnect"),
                                   });
    return table;
}

const MemberTable& LogRecords::members() const
{
    static const MemberTable table("LogRecords", nullptr,
                                   {
                                       readOnly<&LogRecords::rowCount>("RowCount"),
                                       readOnly<&LogRecords::columnCount>("ColumnCount"),
                                       readOnly<&LogRecords::columnLabel>("ColumnLabel"),
                                       readOnly<&LogRecords::columnUnits>("ColumnUnits"),
                                       readOnly<&LogRecords::cell>("Cell").asDefault(),
                                   });
    return table;
}

const MemberTable& LogBuffer::members() const
{
    static const MemberTable table("LogBuffer", nullptr,
                                   {
                                       readOnly<&LogBuffer::RecordCount>("RecordCount"),
                                       readOnly<&LogBuffer::Records>("Records"),
                                   });
    return table;
}

const MemberTable& LogBuffers::members() const
{
    static const MemberTable table("LogBuffers", nullptr,
                                   {
                                       readOnly<&LogBuffers::Count>("Count"),
                                       readOnly<&LogBuffers::Item>("Item").asDefault(),
                                   });
    return table;
}

std::unique_ptr<binding::Enumerator> LogBuffers::enumerate()
{
    return std::make_unique<IndexEnumerator<LogBuffers>>(*this);
}

const MemberTable& Live::members() const
{
    static const MemberTable table("Live", nullptr,
                                   {
                                       readOnly<&Live::Buffers>("Buffers"),
                                       method<&Live::ReadMemory>("ReadMemory"),
                                       method<&Live::WriteChannel>("WriteChannel"),
                                   });
    return table;
}

const MemberTable& Logger::members() const
{
    static const MemberTable table("Logger", nullptr,
                                   {
                                       readOnly<&Logger::Link>("Link"),
                                       readOnly<&Logger::Scheme>("Scheme"),
                                       readOnly<&Logger::Live>("Live"),
                                       readOnly<&Logger::Actions>("Actions"),
                                       method<&Logger::AddAction>("AddAction"),
                                       method<&Logger::RemoveActions>("RemoveActions"),
                                       method<&Logger::createChannel>("CreateChannel"),
                                   });
    return table;
}

} // namespace zan::site
