#include "pmset/PMSetError.h"

namespace lullwick {

PMSetError PMSetError::makeLaunchFailed(QString reason)
{
    return PMSetError(launchFailed, 0, std::move(reason));
}

PMSetError PMSetError::makeNonZeroExit(qint32 status, QString standardError)
{
    return PMSetError(nonZeroExit, status, std::move(standardError));
}

QString PMSetError::errorDescription() const
{
    switch (m_case) {
    case launchFailed:
        return QStringLiteral("Couldn't run pmset: ") + m_text;
    case nonZeroExit: {
        QString description = QStringLiteral("pmset exited with status %1.").arg(m_status);
        if (!m_text.isEmpty())
            description += QStringLiteral("\n\n") + m_text;
        return description;
    }
    }
    Q_UNREACHABLE();
}

} // namespace lullwick
