#include <cstdint>
#include <cstdio>
#include <utility>

#include <QDirIterator>
#include <QFile>

// Feeds every file of the given folders to a fuzz target, once: a replacement for libFuzzer where the
// compiler does not have it. An argument may also name a single file. Each small file is also fed cut off
// after each byte, and with each single byte removed.

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace
{
constexpr qsizetype maxCutSize = 700; // bytes; the cost grows with the square of the size

bool test(const QByteArray &input)
{
    return LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.constData()),
                                  static_cast<std::size_t>(input.size())) == 0;
}

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        return false;
    }
    const QByteArray input = file.readAll();
    std::printf("%s: %lld bytes\n", qPrintable(path), static_cast<long long>(input.size()));
    std::fflush(stdout); // the last name printed is the file that causes a crash
    if (!test(input)) {
        std::fprintf(stderr, "%s: the target skips this input, so it does not belong in a corpus\n",
                     qPrintable(path));
        return false;
    }
    for (qsizetype at = 0; input.size() < maxCutSize && at < input.size(); ++at) {
        test(input.left(at));
        test(QByteArray(input).remove(at, 1));
    }
    return true;
}
} // namespace

int main(int argc, char *argv[])
{
    LLVMFuzzerInitialize(&argc, &argv);
    int status = argc > 1 ? EXIT_SUCCESS : EXIT_FAILURE;
    for (int i = 1; i < argc; ++i) {
        const QString path = QFile::decodeName(argv[i]);
        QStringList files;
        QDirIterator folder(path, QDir::Files);
        while (folder.hasNext())
            files += folder.next();
        if (files.isEmpty()) // a file, or an empty folder, which is an error
            files += path;
        files.sort();
        for (const QString &file : std::as_const(files)) {
            if (!replay(file))
                status = EXIT_FAILURE;
        }
    }
    return status;
}
