#include "CLS_RefDevFactory.h"

#include "CLS_RefDevStore.h"

bool CLS_RefDevFactory::IsIdAdmitted(const QString& _qstrId)
{
    return CLS_RefDevStore::Instance().IsIdAdmitted(_qstrId);
}

int CLS_RefDevFactory::QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                                        QMap<QString, QString>& _qmapValues, QString& _qstrValue)
{
    return CLS_RefDevStore::Instance().QueryDeviceParam(_qstrDevId, _iChannelNo, _iParamType, _qmapValues,
                                                        _qstrValue);
}
