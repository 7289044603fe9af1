#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ravelinth::test {

// A real second file system for the life of the object: an ext4 image on a loop device, tmpfs,
// or a bind mount of a folder. Needs root; `mounted()` says whether it worked and `output()` why
// not.
class Mount {
public:
    Mount(const QByteArray &where, bool ext4);
    // A bind mount: `source` seen again at `where`; read-only where a mistake could reach
    // through it into a real system folder.
    struct Bind {
        QByteArray source;
        bool readOnly = false;
    };
    Mount(const QByteArray &where, const Bind &bind);
    ~Mount();
    Mount(const Mount &) = delete;
    Mount &operator=(const Mount &) = delete;

    bool mounted() const { return m_mounted; }
    const char *output() const { return m_output.constData(); }
    bool remountReadOnly();

private:
    bool mount(const QStringList &arguments);
    QString m_where;
    QByteArray m_output;
    bool m_mounted = false;
};

} // namespace ravelinth::test
