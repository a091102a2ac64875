#pragma once

class QObject;

/// Connects the slots of an object that are named on_NAME_SIGNAL with the signals of the children
/// of a part that have the name, as QMetaObject::connectSlotsByName() does. That function compares
/// each slot with each child, which takes several milliseconds for the hundreds that the panel has;
/// this one looks the name up. A slot without a child is left out, because its child may belong to
/// another part. A slot without its signal is logged. GUI thread only.
void connectByName(QObject *object, const QObject *part);
