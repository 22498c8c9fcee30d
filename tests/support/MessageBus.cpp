#include "tests/support/MessageBus.h"

#include "tests/support/Awaited.h"

#include <stdexcept>

namespace stackreel
{

namespace
{

constexpr int milliseconds = int(std::chrono::milliseconds(ceiling).count());

} // namespace

MessageBus::MessageBus(const QString& program)
{
    constexpr int attempts = 3;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        m_daemon.start(program, {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                 QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
        // This also returns as soon as the program has ended.
        if (m_daemon.waitForReadyRead(milliseconds)) {
            m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
            return;
        }
        stop();
    }
    throw std::runtime_error("no message bus: " + m_daemon.errorString().toStdString() + " " +
                             m_daemon.readAllStandardError().toStdString());
}

MessageBus::~MessageBus()
{
    stop();
}

void MessageBus::stop()
{
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    m_daemon.terminate();
    if (!m_daemon.waitForFinished(milliseconds)) {
        m_daemon.kill();
        m_daemon.waitForFinished(milliseconds);
    }
}

} // namespace stackreel
