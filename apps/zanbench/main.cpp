#include "zanbench/Commands.h"

int main(int argc, char** argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    return zan::host::runProgram(words, {argc, argv});
}
