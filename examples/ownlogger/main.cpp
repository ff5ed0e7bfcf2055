// A logger of your own: its memory is a file, which another program may write.
//
//     ownlogger SCHEME.scheme WINDOW file:/path/to/memory.bin

#include "halyard/LoggerFactory.h"
#include "trellis/SchemeFile.h"
#include "window/BenchWindow.h"

#include <QApplication>
#include <QDebug>
#include <QFile>

namespace {

using namespace zan::halyard;

/// All calls come from the logger's own thread, one at a time, and may block.
class FileDriver : public Driver
{
public:
    explicit FileDriver(const QString& path)
        : m_path(path)
    {}

    DriverResult open(const TextProgress& progress, CancelToken&) override
    {
        progress(QStringLiteral("Opening %1").arg(m_path));
        m_file = std::make_unique<QFile>(m_path);
        if (m_file->open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
            return {};
        const DriverResult failure{DriverStatus::Broken, m_file->errorString()};
        m_file.reset();
        return failure;
    }
    DriverResult readBlock(std::int32_t address, std::int32_t length, QByteArray& bytes, CancelToken&) override
    {
        bytes = m_file->seek(address) ? m_file->read(length) : QByteArray();
        if (bytes.size() == length)
            return {};
        return {DriverStatus::Unavailable,
                QStringLiteral("The file ends before address %1.").arg(address + length)};
    }
    DriverResult writeBlock(std::int32_t address, const QByteArray& bytes, CancelToken&) override
    {
        if (m_file->seek(address) && m_file->write(bytes) == bytes.size() && m_file->flush())
            return {};
        return {DriverStatus::Failed, m_file->errorString()};
    }
    DriverResult program(const PercentProgress&, CancelToken&) override
    {
        return {DriverStatus::Failed, QStringLiteral("A file takes no program.")};
    }
    DriverResult unload(const RecordSink&, const PercentProgress&, CancelToken&) override
    {
        return {DriverStatus::Failed, QStringLiteral("A file has no stored data.")};
    }
    void close() noexcept override { m_file.reset(); }

private:
    QString m_path;
    std::unique_ptr<QFile> m_file;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    // Makes "file:" URIs known, with the options that every kind of logger has: file:/path?period=500&endian=little
    registerDriver(QStringLiteral("file"), [](const DriverRequest& request, QString& error) {
        if (request.uri.address.isEmpty())
            error = QStringLiteral("file: needs the path of a file.");
        return error.isEmpty() ? std::make_unique<FileDriver>(request.uri.address) : nullptr;
    });

    const auto opened = zan::trellis::SchemeFile::open(arguments.value(1));
    if (!opened) {
        qCritical().noquote() << opened.error.text();
        return 1;
    }
    const LoggerResult made = createLogger(arguments.value(3, opened.scheme->loggerUri()), opened.scheme);
    if (!made.logger) {
        qCritical().noquote() << made.error;
        return 1;
    }
    zan::window::BenchWindow panel;
    panel.InitProperties();
    panel.setLogger(made.logger);
    panel.LoadWindow(arguments.value(2));
    panel.resize(1000, 640);
    panel.show();
    made.logger->AddAction(zan::site::LiveAction);
    made.logger->Link()->Connect();
    return QApplication::exec();
}
