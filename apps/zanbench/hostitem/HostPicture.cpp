#include "zanbench/hostitem/HostPicture.h"

#include "zanbench/PictureFile.h"

#include "window/BenchWindow.h"

#include <QPixmap>

namespace zan::host {

using values::ErrorNumber;

void HostPicture::Shot(const QString& file)
{
    const QString path = run().filePath(file);
    if (const QString wrong = pictureNameProblem(path); !wrong.isEmpty())
        values::raise(ErrorNumber::InvalidCall, wrong);
    if (const QString failure = writePicture(panel().grab(), path); !failure.isEmpty())
        values::raise(ErrorNumber::PathFileAccess, failure);
}

const binding::MemberTable& HostPicture::members() const
{
    return binding::table(
        [] { return binding::MemberTable("HostPicture", nullptr, {binding::method<&HostPicture::Shot>("Shot")}); });
}

} // namespace zan::host
