#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace ravelinth::views {

// Lets the window's Select All command have Ctrl+A even while a text field has focus: a text
// field claims the key for its own text, but in this window select-all means the listed files.
// Installed for the whole application, it acts only on keys meant for items of `window`.
class SelectAllPassThrough : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickWindow *window READ window WRITE setWindow NOTIFY windowChanged)

public:
    explicit SelectAllPassThrough(QObject *parent = nullptr);
    ~SelectAllPassThrough() override;

    QQuickWindow *window() const;
    void setWindow(QQuickWindow *window);

signals:
    void windowChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QQuickWindow> m_window;
};

} // namespace ravelinth::views
