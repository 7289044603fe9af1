#include "Mount.h"

#include "Programs.h"

#include <QDir>
#include <QFile>

#include <sys/mount.h>

namespace ravelinth::test {

Mount::Mount(const QByteArray &where, bool ext4) : m_where(QFile::decodeName(where)) {
    QDir().mkpath(m_where);
    const QString image = m_where + u".img"_qs;
    if (ext4) {
        run(u"truncate"_qs, {u"-s"_qs, u"32M"_qs, image});
        run(u"mkfs.ext4"_qs, {u"-q"_qs, u"-F"_qs, image});
    }
    m_mounted = mount(ext4 ? QStringList{u"-o"_qs, u"loop"_qs, image, m_where}
                           : QStringList{u"-t"_qs, u"tmpfs"_qs, u"none"_qs, m_where});
}

Mount::Mount(const QByteArray &where, const Bind &bind) : m_where(QFile::decodeName(where)) {
    QDir().mkpath(m_where);
    m_mounted = mount(QStringList{u"--bind"_qs} +
                      (bind.readOnly ? QStringList{u"-o"_qs, u"ro"_qs} : QStringList()) +
                      QStringList{QFile::decodeName(bind.source), m_where});
}

Mount::~Mount() {
    if (m_mounted)
        ::umount2(QFile::encodeName(m_where).constData(), MNT_DETACH);
}

bool Mount::remountReadOnly() {
    return mount({u"-o"_qs, u"remount,ro"_qs, m_where});
}

bool Mount::mount(const QStringList &arguments) {
    const ProcessOutput output = run(u"mount"_qs, arguments);
    m_output = output.out + output.err;
    return output.exitCode == 0;
}

} // namespace ravelinth::test
