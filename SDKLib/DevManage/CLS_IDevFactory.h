#pragma once
// The device factory of the device-management library, reached through DevManage::GetDevFactory().
// The channel status thread asks it which devices take part in its second pass and queries their
// image channel. Called from that thread without a lock: an implementation must be thread safe.

#include <QMap>
#include <QString>

// Parameter type of QueryDeviceParam: the image channel of a device.
constexpr int PARAM_IMAGE_CHANNEL = 10072;

class CLS_IDevFactory
{
public:
    virtual ~CLS_IDevFactory() = default;

    // Whether the device _qstrId takes part in the second pass of the channel status thread.
    virtual bool IsIdAdmitted(const QString& _qstrId) = 0;

    // Queries parameter _iParamType of channel _iChannelNo of the device _qstrDevId; the answer goes
    // to _qmapValues and _qstrValue. Gives an int code, negative on failure.
    virtual int QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                                 QMap<QString, QString>& _qmapValues, QString& _qstrValue) = 0;
};
