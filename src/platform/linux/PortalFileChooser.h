// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/FileChooser.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QVariantMap>
#include <functional>

// The desktop portal's file chooser (org.freedesktop.portal.FileChooser):
// GNOME's or Phosh's on a GNOME-based phone, KDE's on Plasma, the host's
// from inside a Flatpak. Everything is asked without waiting: OpenFile or
// SaveFile gives a request object whose Response signal brings the answer
// when the person is done. A portal that is not there, refuses the
// question, does not take it within the call timeout or goes away before
// answering counts as unavailable, so that the toolkit's dialog asks
// instead.
//
// Not Qt's own portal support (the xdgdesktopportal platform theme): that
// comes only with the theme chosen for the whole process, in place of the
// desktop's own, and it then sends every file dialog to the portal whether
// one answers or not.
class PortalFileChooser final : public FileChooser
{
    Q_OBJECT

public:
    static constexpr int defaultCallTimeoutMs = 25000;

    explicit PortalFileChooser(QDBusConnection bus, QObject *parent = nullptr);
    ~PortalFileChooser() override;

    // The window the chooser belongs to, as the portal names windows
    // ("x11:1a00003"); empty where it cannot be named (Wayland).
    void setParentWindow(std::function<QString()> handle) { m_parentWindow = std::move(handle); }
    // How long the portal may take to take the question (a portal started
    // on demand needs a moment); the person's own time is not limited.
    void setCallTimeout(int milliseconds) { m_callTimeoutMs = milliseconds; }

    void choose(const Request &request) override;

    // The portal's request object of the question open, empty when none.
    QString openRequest() const { return m_handle; }

    // A file the portal answered with, "file:///home/anna/My%20cards.vcf":
    // the local file's URL, or an empty one for anything else.
    static QUrl localFile(const QString &uri);

private slots:
    void answered(uint response, const QVariantMap &results);

private:
    void listen(const QString &handle);
    void stopListening();
    void giveUp();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    std::function<QString()> m_parentWindow;
    int m_callTimeoutMs = defaultCallTimeoutMs;
    // The request object while a question is open.
    QString m_handle;
    // Which question an answer belongs to: one replaced says nothing more.
    quint64 m_question = 0;
};
