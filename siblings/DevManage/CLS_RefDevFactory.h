#pragma once
// The device factory of the reference device layer: its answers are set through the control
// interface and kept in CLS_RefDevStore. Safe from any thread; one process-wide instance, handed
// out by "GetDevFactory".

#include "CLS_IDevFactory.h"

class CLS_RefDevFactory : public CLS_IDevFactory
{
public:
    bool IsIdAdmitted(const QString& _qstrId) override;
    // Only PARAM_IMAGE_CHANNEL is known: its answer is the value set for the id (default 0), also
    // written to _qstrValue and under "value" into _qmapValues. Other parameters give -1.
    int QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                         QMap<QString, QString>& _qmapValues, QString& _qstrValue) override;
};
