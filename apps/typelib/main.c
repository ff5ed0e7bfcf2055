/* Writes the type library of the components into a file:
 *
 *     zanbench-typelib FILE
 */

#include "component/ZanBenchComponent.h"

#include <stdio.h>

static int failed(const char* what)
{
    fprintf(stderr, "zanbench-typelib: %s: %s\n", what, zanErrorDescription());
    return 1;
}

int main(int argc, char** argv)
{
    ZanVariant text = {0};
    FILE* file;
    size_t written;
    if (argc != 2) {
        fprintf(stderr, "usage: zanbench-typelib FILE\n");
        return 2;
    }
    if (zanStart(ZAN_OFFSCREEN) || zanTypeLibrary(&text))
        return failed("cannot make the text");
    file = fopen(argv[1], "wb");
    if (!file) {
        perror(argv[1]);
        return 1;
    }
    written = fwrite(text.as.text, 1, (size_t)text.length, file);
    if (fclose(file) != 0 || written != (size_t)text.length) {
        perror(argv[1]);
        return 1;
    }
    zanClear(&text);
    return zanEnd() ? failed("cannot end") : 0;
}
