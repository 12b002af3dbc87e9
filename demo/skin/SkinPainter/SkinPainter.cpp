// Build tool: draws the images of one skin into a folder.
//
//   SkinPainter <skin> <output folder> [<image name>...]
//
// Without names it draws every image it knows. Each image is written at 16 pixels and, as
// "<name>@2x.png", at 32 pixels for scaled screens. Exit code 0, or 1 with a message on the error
// stream for an unknown skin, an unknown image name or a file that can't be written.

#include "CLS_SkinPainter.h"

#include <QDir>
#include <QString>
#include <QStringList>

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: SkinPainter <skin> <output folder> [<image name>...]\n");
        return 1;
    }

    const QString qstrSkin = QString::fromLocal8Bit(argv[1]);
    const QString qstrDir = QString::fromLocal8Bit(argv[2]);

    STRCT_SkinPalette clsPalette;
    if (CLS_SkinPainter::GetPalette(qstrSkin, clsPalette) != 0) {
        std::fprintf(stderr, "SkinPainter: unknown skin \"%s\"\n", argv[1]);
        return 1;
    }
    const CLS_SkinPainter clsPainter(clsPalette);

    QStringList qlstNames;
    for (int i = 3; i < argc; ++i) {
        qlstNames << QString::fromLocal8Bit(argv[i]);
    }
    if (qlstNames.isEmpty()) {
        qlstNames = clsPainter.GetImageNames();
    }

    if (!QDir().mkpath(qstrDir)) {
        std::fprintf(stderr, "SkinPainter: can't make folder \"%s\"\n", argv[2]);
        return 1;
    }

    int iResult = 0;
    for (const QString& qstrName : qlstNames) {
        if (clsPainter.Save(qstrName, qstrDir) != 0) {
            std::fprintf(stderr, "SkinPainter: can't draw \"%s\" into \"%s\"\n", qPrintable(qstrName),
                         argv[2]);
            iResult = 1;
        }
    }
    return iResult;
}
