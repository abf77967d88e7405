#include "host/SafeCall.h"

#include <utility>

namespace
{
// The message belongs to the failure result until someone raises it; one per thread, as results are.
thread_local QString lastMessage;
} // namespace

ESafecallError::ESafecallError(HResult result, const QString &message) : Exception(message), m_result(result)
{
}
ESafecallError::~ESafecallError() = default;

HResult SafecallFailure() noexcept
{
    try {
        throw;
    } catch (const ESafecallError &error) {
        lastMessage = error.message();
        return error.Result();
    } catch (const Exception &error) {
        lastMessage = error.message();
        return E_FAIL;
    } catch (const std::exception &error) {
        lastMessage = QString::fromUtf8(error.what());
        return E_FAIL;
    } catch (...) {
        lastMessage = QStringLiteral("Unknown failure");
        return E_UNEXPECTED;
    }
}

void SafecallCheck(HResult result)
{
    if (result >= 0)
        return;
    QString message = std::exchange(lastMessage, QString());
    if (message.isEmpty())
        message = QStringLiteral("The call failed with result 0x%1")
                      .arg(static_cast<quint32>(result), 8, 16, QLatin1Char('0'));
    throw ESafecallError(result, message);
}
