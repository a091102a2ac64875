#include "storage/inicodec.h"

QByteArray IniCodec::name() const
{
    return "tamber-ini";
}

int IniCodec::mibEnum() const
{
    return 0; // none
}

QString IniCodec::convertToUnicode(const char *in, int length, ConverterState *) const
{
    return QString::fromUtf8(in, length);
}

QByteArray IniCodec::convertFromUnicode(const QChar *in, int length, ConverterState *) const
{
    QString text(in, length);
    const bool goesOn = length > 0 && in[0].isLowSurrogate() && !m_firstHalf.isNull();
    if (goesOn) text.prepend(m_firstHalf);
    m_firstHalf = QChar();
    if (length > 0 && in[length - 1].isHighSurrogate()) {
        m_firstHalf = in[length - 1];
        text.chop(1);
    }
    return text.toUtf8();
}

QTextCodec *iniCodec()
{
    static auto *const codec = new IniCodec;
    return codec;
}
