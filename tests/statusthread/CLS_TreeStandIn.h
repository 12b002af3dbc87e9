#pragma once
// Stands in for the device tree that owns a status thread: connects to it the way the tree does
// (by signature, automatic connections) and keeps every batch that arrives. Lives on the GUI
// thread, so the batches arrive queued and are read there only.

#include "CLS_DeviceTreeBGThread.h"

#include <QMap>
#include <QObject>
#include <QPair>
#include <QStringList>
#include <QVariant>
#include <QVector>

typedef QMap<QString, QPair<bool, int>> ChannelBatch;

class CLS_TreeStandIn : public QObject
{
    Q_OBJECT

public:
    void Attach(CLS_DeviceTreeBGThread* _pThread)
    {
        connect(_pThread, SIGNAL(SignChannelStatusChanged(QVariant)), this,
                SLOT(UpdateAllChannelsStatus(QVariant)));
        connect(this, SIGNAL(SignChannelStatusUpdate()), _pThread, SLOT(SlotChannelStatusChanged()));
    }

    // What the tree's UpdateChannelStatus does: ask for a full report.
    void UpdateChannelStatus() { emit SignChannelStatusUpdate(); }

    // A batch as "id=image/status" words in id order, e.g. "chA1=1/1 chB1=0/1".
    static QString Text(const ChannelBatch& _qmapBatch)
    {
        QStringList qlstWords;
        for (auto it = _qmapBatch.cbegin(); it != _qmapBatch.cend(); ++it) {
            qlstWords
                << QString("%1=%2/%3").arg(it.key()).arg(it.value().first ? 1 : 0).arg(it.value().second);
        }
        return qlstWords.join(' ');
    }

    // Every batch so far, one text each.
    QStringList Texts() const
    {
        QStringList qlstTexts;
        for (const ChannelBatch& qmapBatch : m_qvecBatches) {
            qlstTexts << Text(qmapBatch);
        }
        return qlstTexts;
    }

    int Count() const { return m_qvecBatches.size(); }

    QVector<ChannelBatch> m_qvecBatches;
    QVector<int> m_qvecTypes;  // user type of each QVariant that came in
    QVector<bool> m_qvecOnGui; // whether each batch was delivered on this object's thread

public slots:
    int UpdateAllChannelsStatus(QVariant _qvarData)
    {
        m_qvecTypes << _qvarData.userType();
        m_qvecOnGui << (QThread::currentThread() == thread());
        m_qvecBatches << _qvarData.value<ChannelBatch>();
        return 0;
    }

signals:
    void SignChannelStatusUpdate();
};
