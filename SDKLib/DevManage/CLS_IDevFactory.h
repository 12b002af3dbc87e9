#pragma once
// The device factory of the device-management library, reached through DevManage::GetDevFactory().
// The channel status thread asks it which devices take part in its second pass and queries their
// image channel. Called from that thread without a lock: an implementation must be thread safe.

#include <QMap>
#include <QString>

/// Parameter type of CLS_IDevFactory::QueryDeviceParam(): whether a device's channel is an image
/// channel.
constexpr int PARAM_IMAGE_CHANNEL = 10072;

/// The device factory: the interface of the device-management library's object.
///
/// Reached through DevManage::GetDevFactory(); the library owns the one object of the process (never
/// delete it). The channel status thread asks it which channels take part in its second pass and
/// whether a channel is an image channel, from that thread and without a lock: an implementation
/// must be thread safe.
class CLS_IDevFactory
{
public:
    /// Virtual, so that an implementation is destroyed whole; only the library destroys one.
    virtual ~CLS_IDevFactory() = default;

    /// Whether the resource _qstrId (a channel's id) takes part in the second pass of the channel
    /// status thread.
    virtual bool IsIdAdmitted(const QString& _qstrId) = 0;

    /// Queries parameter _iParamType of channel _iChannelNo of the device _qstrDevId; the answer may
    /// also go to _qmapValues and _qstrValue. The channel status thread passes a channel's id, 0 and
    /// PARAM_IMAGE_CHANNEL, and reads only the result.
    /// @return the answer: for PARAM_IMAGE_CHANNEL, above 0 for an image channel, 0 for none;
    ///         negative on failure (read as none).
    virtual int QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                                 QMap<QString, QString>& _qmapValues, QString& _qstrValue) = 0;
};
