#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QString>

#include <chrono>

/// Pictures that are lists of drawing commands (wmf). Their interpreter is a library with a history of faults, so it runs
/// in a program of its own, zanbench-metafile, which limits its own processor time, memory and files before it looks at
/// the picture: a hostile file costs at most a picture that is refused.
namespace zan::surface::Metafile {

/// Most bytes, commands and pixels: more than any drawing of a site has, too little to hurt.
constexpr qint64 LargestFile = 16LL * 1024 * 1024;
constexpr int MostRecords = 100'000;
constexpr quint32 LargestSide = 4096;
constexpr quint64 LargestArea = 8ULL * 1024 * 1024;
/// How long a caller waits for a picture, at most.
constexpr std::chrono::milliseconds LongestWait{3000};

/// Whether a file that begins like this may be one.
bool isMetafile(QByteArrayView head);
/// Whether a file holds what its head promises: a size, and commands one after the other until the one that ends them.
/// What is not drawn is not looked at.
bool isWellFormed(QByteArrayView bytes);
/// The picture at 96 pixels to the inch, smaller when that would be too large; null when there is none to be had in time.
QImage draw(const QByteArray& bytes, std::chrono::milliseconds longestWait = LongestWait);

/// The program that draws; without one it is looked for beside the program that runs and beside our libraries.
void setProgram(const QString& file);
/// Where it is; empty when it is not there.
QString program();

} // namespace zan::surface::Metafile
