// Any bytes as a picture file: refused with the number of the platform for it, or a picture of reasonable size that
// can be measured and drawn.

#include "fuzz/support/MemoryFile.h"
#include "surface/host/Metafile.h"
#include "surface/host/Picture.h"

#include <QGuiApplication>
#include <QPainter>

#include <cstdint>

using namespace zan;
using fuzz::MemoryFile;
using fuzz::require;

namespace {

/// What a panel does with a picture.
void use(const surface::Picture& picture)
{
    require(picture.width() > 0 && picture.height() > 0, "a picture has a size");
    require(picture.pixmap().size() == picture.image().size(), "its pixmap shows all of it");
    QImage canvas(64, 48, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::white);
    QPainter painter(&canvas);
    painter.drawPixmap(0, 0, picture.pixmap());
    painter.drawImage(canvas.rect(), picture.image());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static const QGuiApplication* const application = [] {
        surface::Metafile::setProgram(QStringLiteral("/nowhere")); // a process for each input would be all there is
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        return new QGuiApplication(count, arguments);
    }();
    static_cast<void>(application);
    const MemoryFile file(data, size);
    try {
        const values::Ref<surface::Picture> picture = surface::loadPicture(file.path());
        require(bool(picture), "a file that holds no picture is refused");
        use(*picture);
    } catch (const values::RuntimeError& error) {
        require(error.number() == int(values::ErrorNumber::InvalidPicture), "what holds no picture is error 481");
    }
    return 0;
}
