#pragma once

#include <QNetworkProxy>
#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>

namespace stackreel
{

/// Asks which proxy leads to an address, without holding up the thread that asks: the desktop may have to
/// fetch and run a script to know, and that cannot be given up. Main thread.
class ProxyLookup : public QObject
{
    Q_OBJECT
public:
    /// Gives the proxy for an address. Is called on a thread of its own, takes as long as it likes, and may
    /// still be at it when this object is gone.
    using Choice = std::function<QNetworkProxy(const QUrl&)>;

    /// What the desktop is set to.
    static QNetworkProxy systemChoice(const QUrl& url);

    explicit ProxyLookup(Choice choice, QObject* parent = nullptr);
    /// Waits for nothing.
    ~ProxyLookup() override;

    /// Asks for an address; `found` comes later, or never. While an earlier question is open no further one
    /// is put, and its answer is the answer to this one as well.
    void start(const QUrl& url);

Q_SIGNALS:
    void found(const QNetworkProxy& proxy);

private:
    struct Mailbox;

    void conclude(const QNetworkProxy& proxy);

    const Choice m_choice;
    const std::shared_ptr<Mailbox> m_mailbox;
    bool m_isOpen = false; ///< a question was put and is not answered
};

} // namespace stackreel
