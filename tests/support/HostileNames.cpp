#include "HostileNames.h"

#include <QString>

namespace ravelinth::test {

namespace {

bool isValidUtf8(const QByteArray &bytes) {
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

} // namespace

QList<QByteArray> hostileNames() {
    QList<QByteArray> names;
    // Every single byte but NUL and "/", once in the middle of a name and once as the whole name
    // where that is a legal name.
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == '/')
            continue;
        const char c = char(byte);
        names.append("byte-" + QByteArray::number(byte, 16) + '-' + c + "-end.bin");
        if (c != '.')
            names.append(QByteArray(1, c));
    }
    const QList<QByteArray> whole{
        "line\nbreak.mov",
        "\n",
        "\n\n",
        "\r\n",
        "trailing newline\n",
        "tab\there.zip",
        " ",
        "   ",
        " leading space.iso",
        "trailing space.iso ",
        "\"double\" quoted.pdf",
        "'single' quoted.pdf",
        "it's \"mixed\" `quotes`.txt",
        "back\\slash\\.txt",
        "-",
        "--",
        "-rf",
        "--help",
        "--json",
        "--min-size-mb=0",
        "*",
        "?",
        "[a-z]*.iso",
        "{a,b}",
        "$HOME",
        "$(touch pwned)",
        "`id`",
        "; rm -rf ~ ;",
        "a|b&c>d<e",
        "%s%n%x%p%%",
        "{}",
        "#comment",
        "~",
        "~user",
        "...",
        ". ",
        ".. ",
        "..hidden",
        ".hidden\nnewline",
        "CON",
        "nul.txt",
        "a:b:c",
        "file%20name%2F.txt",
        "Path=%2Fetc%2Fpasswd",
        "[Trash Info]",
        "\x1b[31mred\x1b[0m.txt",
        "bell\x07.txt",
        "del\x7f.txt",
        "\xef\xbb\xbf"
        "bom.txt",
        "\xe2\x80\xae"
        "gpj.exe",
        "zero\xe2\x80\x8bwidth.mp4",
        "e\xcc\x81"
        "clair.mp3",
        "\xf0\x9f\x92\xa9.mov",
        "\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e.zip",
        "\xd7\xa2\xd7\x91\xd7\xa8\xd7\x99\xd7\xaa.iso",
        "\xef\xbf\xbd.iso",
        // Not UTF-8.
        "caf\xe9.iso",
        "\xff\xfe",
        "\x80",
        "\xc0\xaf"
        "overlong.txt",
        "\xe0\x80\xaf"
        "overlong3.txt",
        "\xed\xa0\x80"
        "surrogate.txt",
        "\xed\xbf\xbf"
        "surrogate2.txt",
        "\xf4\x90\x80\x80"
        "beyond.txt",
        "\xf8\x88\x80\x80\x80"
        "five.txt",
        "trunc\xc3",
        "trunc\xe2\x82",
        "mixed \xe9t\xc3\xa9.mkv",
        "\xe9\n\"\\.dmg",
        // The longest names ext4 and tmpfs take: 255 bytes.
        QByteArray(251, 'x') + ".iso",
        QByteArray("\xe2\x82\xac").repeated(85),
        QByteArray(255, '\xe9'),
    };
    // A single byte such as "-" or "\n" is in both lists; a folder holds each name once.
    for (const QByteArray &name : whole) {
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}

QList<QByteArray> nonUtf8HostileNames() {
    QList<QByteArray> result;
    for (const QByteArray &name : hostileNames()) {
        if (!isValidUtf8(name))
            result.append(name);
    }
    return result;
}

} // namespace ravelinth::test
