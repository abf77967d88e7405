#include "host/SafeCall.h"

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// The result and message of a failure, until SafecallCheck throws them.
struct Kept {
    HResult Result;
    QString Message;
};

// A plain pointer, because a thread_local variable with a destructor would keep the library loaded until its
// threads end.
constinit thread_local Kept *kept = nullptr;

HResult keep(HResult result, const QString &message)
{
    delete std::exchange(kept, nullptr);
    kept = new Kept{result, message};
    return result;
}
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
        return keep(error.Result(), error.message());
    } catch (const Exception &error) {
        return keep(E_FAIL, error.message());
    } catch (const std::exception &error) {
        return keep(E_FAIL, QString::fromUtf8(error.what()));
    } catch (...) {
        return keep(E_UNEXPECTED, u"Unknown failure"_s);
    }
}

void SafecallCheck(HResult result)
{
    const std::unique_ptr<Kept> known(std::exchange(kept, nullptr));
    if (result >= 0)
        return;
    QString message = known && known->Result == result ? known->Message : QString();
    if (message.isEmpty())
        message =
            u"The call failed with result 0x%1"_s.arg(static_cast<quint32>(result), 8, 16, QLatin1Char('0'));
    throw ESafecallError(result, message);
}
