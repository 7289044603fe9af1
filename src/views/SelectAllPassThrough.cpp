#include "SelectAllPassThrough.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>

namespace ravelinth::views {

SelectAllPassThrough::SelectAllPassThrough(QObject *parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

SelectAllPassThrough::~SelectAllPassThrough() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
}

QQuickWindow *SelectAllPassThrough::window() const {
    return m_window;
}

void SelectAllPassThrough::setWindow(QQuickWindow *window) {
    if (m_window == window)
        return;
    m_window = window;
    emit windowChanged();
}

bool SelectAllPassThrough::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::ShortcutOverride || !m_window)
        return false;
    if (!static_cast<QKeyEvent *>(event)->matches(QKeySequence::SelectAll))
        return false;
    const auto *item = qobject_cast<QQuickItem *>(watched);
    if (watched != m_window && !(item && item->window() == m_window))
        return false;
    // Declining the override hands the key to the shortcut, which the focused field would
    // otherwise have kept.
    event->ignore();
    return true;
}

} // namespace ravelinth::views
