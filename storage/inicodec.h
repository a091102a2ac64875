#pragma once

#include <QTextCodec>

/// UTF-8 for settings files. The store hands its codec one UTF-16 unit at a time, and so the plain
/// codec loses every character that takes two; this one puts the halves together again.
/// Made on the heap and never deleted: codecs belong to Qt.
class IniCodec final : public QTextCodec
{
public:
    QByteArray name() const override;
    int mibEnum() const override;

protected:
    QString convertToUnicode(const char *in, int length, ConverterState *state) const override;
    QByteArray
    convertFromUnicode(const QChar *in, int length, ConverterState *state) const override;

private:
    mutable QChar m_firstHalf; ///< the unit before, when it was the first of two
};

/// The one codec of all settings files.
QTextCodec *iniCodec();
