#include "data/Exceptions.h"

Exception::Exception(QString message) : m_message(std::move(message)), m_utf8(m_message.toUtf8()) {}

// Defined here, so that each type's run-time information is in one library and the type is caught across
// libraries.
Exception::~Exception() = default;
EConvertError::~EConvertError() = default;
EDatabaseError::~EDatabaseError() = default;
EOverflow::~EOverflow() = default;
EListError::~EListError() = default;
EAbstractError::~EAbstractError() = default;
