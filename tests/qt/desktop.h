// A desktop that writes down which addresses of files it is asked to show, in place of showing
// them.
#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

namespace zrt {

class Desktop : public QObject {
    Q_OBJECT

  public:
    Desktop() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Show"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    Q_DISABLE_COPY_MOVE(Desktop)

    Q_INVOKABLE void Show(const QUrl &address) { Shown.append(address); }

    QList<QUrl> Shown;
};

} // namespace zrt
