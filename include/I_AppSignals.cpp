#include "I_AppSignals.h"

I_AppSignals::I_AppSignals(QObject* parent) : QObject(parent) {}

I_AppSignals::~I_AppSignals() = default;
