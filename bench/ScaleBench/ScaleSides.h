#pragma once
// The two sides of the scale benchmarks and what drives them: our device tree, and a plain
// QTreeWidget written the way an experienced Qt engineer writes it (rows built with addChildren,
// one shared QIcon per picture file, uniform row heights, the two tool buttons of a channel painted
// by a QStyledItemDelegate). A custom tree of groups of 32 channels under one root, the dark skin
// loaded, the window shown. Included by one source file of each benchmark program.

#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <cstdio>
#include <functional>
#include <memory>

namespace {

constexpr int CONST_iChannelsPerGroup = 32;
constexpr int CONST_iScrollPages = 40;
const QString CONST_qstrRootId = QStringLiteral("custom_root_id");
const QString CONST_qstrCommon = QStringLiteral("North"); // in every row's text

using StatusMap = QMap<QString, QPair<bool, int>>;

QString PicPath()
{
    return QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtTreeWidget/images/";
}

long PeakRssKb()
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> qlstLines = file.readAll().split('\n');
    for (const QByteArray& qbaLine : qlstLines) {
        if (qbaLine.startsWith("VmHWM:"))
            return qbaLine.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

// Lets every posted event, timer of zero length and delayed layout run, then paints the window
// once, as the first frame after the operation would.
void Settle(QWidget* _pWindow)
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    _pWindow->repaint();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void Report(const char* _pOp, double _dMs)
{
    std::printf("OP %s %.3f\n", _pOp, _dMs);
    std::fflush(stdout);
}

double TimeMs(const std::function<void()>& _fnWork)
{
    QElapsedTimer timer;
    timer.start();
    _fnWork();
    return timer.nsecsElapsed() / 1e6;
}

QString GroupId(int _iGroup)
{
    return QString("grp-%1").arg(_iGroup);
}
QString ChannelId(int _iGroup, int _iChannel)
{
    return QString("ch-%1-%2").arg(_iGroup).arg(_iChannel);
}
QString GroupText(int _iGroup)
{
    return QString("%1 group %2").arg(CONST_qstrCommon).arg(_iGroup, 4, 10, QChar('0'));
}
QString ChannelText(int _iGroup, int _iChannel)
{
    return QString("%1 cam %2-%3")
        .arg(CONST_qstrCommon)
        .arg(_iGroup, 4, 10, QChar('0'))
        .arg(_iChannel, 2, 10, QChar('0'));
}

QVector<CLS_ItemButton> ChannelButtons()
{
    QVector<CLS_ItemButton> qvecButtons(2);
    qvecButtons[0].m_qstrId = "preview";
    qvecButtons[0].m_qstrIcon = PicPath() + "preview.png";
    qvecButtons[0].m_qstrTooltip = "Live view";
    qvecButtons[1].m_qstrId = "playback";
    qvecButtons[1].m_qstrIcon = PicPath() + "playback.png";
    qvecButtons[1].m_qstrTooltip = "Playback";
    qvecButtons[1].m_blCheckable = true;
    return qvecButtons;
}

StatusMap Batch(int _iGroups, int _iEvery, int _iStatus)
{
    StatusMap qmapBatch;
    int i = 0;
    for (int g = 0; g < _iGroups; ++g) {
        for (int c = 0; c < CONST_iChannelsPerGroup; ++c, ++i) {
            if (i % _iEvery == 0)
                qmapBatch.insert(ChannelId(g, c), qMakePair(false, _iStatus));
        }
    }
    return qmapBatch;
}

// ---- one side of one case -----------------------------------------------------------------------

struct STRCT_Case
{
    int m_iGroups = 1000;
    QString m_qstrButtons = "none"; // none, always, hover
    bool m_blExpanded = false;
    bool m_blAddresses = false; // channels carry "10.0.<group>.<n>:<channel>" in m_qstrExtend
};

// What each side offers the driver; every operation returns when its work is done, the driver
// settles and paints.
class CLS_Side
{
public:
    virtual ~CLS_Side() = default;
    virtual QWidget* Window() = 0;
    virtual QAbstractItemView* View() = 0;
    virtual void Init(const STRCT_Case& _stCase) = 0;
    virtual void ExpandAll() = 0;
    virtual void Status(const StatusMap& _qmapBatch) = 0;
    virtual void CheckRoot(bool _blChecked) = 0;
    virtual QLineEdit* SearchLine() = 0;
    virtual void ShowByName(const QString& _qstrName) = 0;
    virtual void Destroy() = 0;
};

class CLS_OurSide : public CLS_Side
{
public:
    QWidget* Window() override { return m_pWindow.get(); }
    QAbstractItemView* View() override { return m_pView; }

    void Init(const STRCT_Case& _stCase) override
    {
        m_pWindow = std::make_unique<QWidget>();
        auto* pLayout = new QVBoxLayout(m_pWindow.get());
        const n_ItemBtnShowType iShow =
            _stCase.m_qstrButtons == "hover" ? ITEM_BTN_SHOW_HOVER : ITEM_BTN_SHOW_ALWAYS;
        m_pTree = new CLS_WgtDeviceTree(nullptr, DEV_TREE_CUSTOM, false, true, false, true, false, iShow);
        pLayout->addWidget(m_pTree);
        m_pWindow->resize(420, 900);
        m_pWindow->show();
        m_pView = m_pTree->findChild<CLS_WgtBaseTreeWidget*>();
        m_pPanel = m_pTree->findChild<CLS_WgtTreeWidget*>();

        QMap<QString, CLS_CustomTreeNode> qmapNodes;
        for (int g = 0; g < _stCase.m_iGroups; ++g) {
            CLS_CustomTreeNode group;
            group.m_qstrTreeId = GroupId(g);
            group.m_qstrDevId = GroupId(g);
            group.m_qstrTreeParentId = CONST_qstrRootId;
            group.m_qstrName = GroupText(g);
            group.m_iType = 2;
            group.m_iSortNo = g;
            qmapNodes.insert(group.m_qstrTreeId, group);
            for (int c = 0; c < CONST_iChannelsPerGroup; ++c) {
                CLS_CustomTreeNode channel;
                channel.m_qstrTreeId = ChannelId(g, c);
                channel.m_qstrDevId = ChannelId(g, c);
                channel.m_qstrTreeParentId = group.m_qstrTreeId;
                channel.m_qstrName = ChannelText(g, c);
                channel.m_iType = 4;
                channel.m_iSortNo = c;
                if (_stCase.m_blAddresses)
                    channel.m_qstrExtend = QString("10.0.%1.%2:%3").arg(g / 250).arg(g % 250).arg(c + 1);
                qmapNodes.insert(channel.m_qstrTreeId, channel);
            }
        }
        QMap<int, QVector<CLS_ItemButton>> qmapButtons;
        if (_stCase.m_qstrButtons != "none")
            qmapButtons.insert(4, ChannelButtons());
        m_pTree->Init(qmapNodes, CONST_qstrCommon, qmapButtons);
    }
    void ExpandAll() override { m_pTree->ExpandAll(); }
    CLS_WgtDeviceTree* Tree() const { return m_pTree; }
    void Status(const StatusMap& _qmapBatch) override
    {
        m_pTree->UpdateAllChannelsStatus(QVariant::fromValue(_qmapBatch));
    }
    void CheckRoot(bool _blChecked) override
    {
        m_pTree->SetItemCheckStatus(QString(), _blChecked ? Qt::Checked : Qt::Unchecked, true);
    }
    QLineEdit* SearchLine() override { return m_pTree->findChild<QLineEdit*>("qlineedtQueryInput"); }
    void ShowByName(const QString& _qstrName) override { m_pPanel->SetShowItemByName(_qstrName); }
    void Destroy() override
    {
        m_pWindow.reset();
        m_pTree = nullptr;
        m_pView = nullptr;
    }

private:
    std::unique_ptr<QWidget> m_pWindow;
    CLS_WgtDeviceTree* m_pTree = nullptr;
    CLS_WgtTreeWidget* m_pPanel = nullptr;
    CLS_WgtBaseTreeWidget* m_pView = nullptr;
};

// The two buttons of a channel, painted at the right end of its row: always, or on the row under
// the mouse only. A click on one reports its index.
class CLS_ButtonDelegate : public QStyledItemDelegate
{
public:
    CLS_ButtonDelegate(QObject* parent, const QVector<QIcon>& _qvecIcons, bool _blHover)
        : QStyledItemDelegate(parent), m_qvecIcons(_qvecIcons), m_blHover(_blHover)
    {}
    QPersistentModelIndex m_hover;
    int m_iClicks = 0;

    void paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
               const QModelIndex& _index) const override
    {
        QStyledItemDelegate::paint(_pPainter, _option, _index);
        if (_index.data(Qt::UserRole + 2).toInt() != 4)
            return;
        if (m_blHover && _index.sibling(_index.row(), 0) != m_hover)
            return;
        for (int i = 0; i < m_qvecIcons.size(); ++i)
            m_qvecIcons.at(i).paint(_pPainter, ButtonRect(_option.rect, i));
    }
    bool editorEvent(QEvent* _pEvent, QAbstractItemModel* _pModel, const QStyleOptionViewItem& _option,
                     const QModelIndex& _index) override
    {
        if (_pEvent->type() == QEvent::MouseButtonRelease && _index.data(Qt::UserRole + 2).toInt() == 4) {
            const QPoint point = static_cast<QMouseEvent*>(_pEvent)->pos();
            for (int i = 0; i < m_qvecIcons.size(); ++i) {
                if (ButtonRect(_option.rect, i).contains(point)) {
                    ++m_iClicks;
                    return true;
                }
            }
        }
        return QStyledItemDelegate::editorEvent(_pEvent, _pModel, _option, _index);
    }

private:
    static QRect ButtonRect(const QRect& _rect, int _i)
    {
        const int iSide = qMin(_rect.height(), 20);
        return QRect(_rect.right() - (2 - _i) * (iSide + 2), _rect.top() + (_rect.height() - iSide) / 2,
                     iSide, iSide);
    }
    QVector<QIcon> m_qvecIcons;
    bool m_blHover = false;
};

class CLS_PlainTree : public QTreeWidget
{
public:
    CLS_ButtonDelegate* m_pDelegate = nullptr;

protected:
    void mouseMoveEvent(QMouseEvent* _pEvent) override
    {
        if (m_pDelegate != nullptr) {
            const QPersistentModelIndex index =
                indexAt(_pEvent->pos()).sibling(indexAt(_pEvent->pos()).row(), 0);
            if (index != m_pDelegate->m_hover) {
                const QModelIndex old = m_pDelegate->m_hover;
                m_pDelegate->m_hover = index;
                if (old.isValid())
                    viewport()->update(visualRect(old));
                viewport()->update(visualRect(index));
            }
        }
        QTreeWidget::mouseMoveEvent(_pEvent);
    }
};

class CLS_BaseSide : public CLS_Side
{
public:
    QWidget* Window() override { return m_pWindow.get(); }
    QAbstractItemView* View() override { return m_pTree; }

    void Init(const STRCT_Case& _stCase) override
    {
        m_pWindow = std::make_unique<QWidget>();
        auto* pLayout = new QVBoxLayout(m_pWindow.get());
        m_pLine = new QLineEdit(m_pWindow.get());
        m_pList = new QListWidget(m_pWindow.get());
        m_pList->setUniformItemSizes(true);
        m_pList->hide();
        m_pTree = new CLS_PlainTree;
        m_pTree->setHeaderHidden(true);
        m_pTree->setUniformRowHeights(true);
        m_pTree->setColumnCount(1);
        pLayout->addWidget(m_pLine);
        pLayout->addWidget(m_pList);
        pLayout->addWidget(m_pTree);
        m_pWindow->resize(420, 900);
        m_pWindow->show();

        const QString qstrPic = PicPath();
        const QIcon iconGroup(qstrPic + "fenzu.png");
        m_iconOffline = QIcon(qstrPic + "channel_offline.png");
        m_iconOnline = QIcon(qstrPic + "channel_online.png");
        if (_stCase.m_qstrButtons != "none") {
            m_pTree->m_pDelegate = new CLS_ButtonDelegate(
                m_pTree, {QIcon(qstrPic + "preview.png"), QIcon(qstrPic + "playback.png")},
                _stCase.m_qstrButtons == "hover");
            m_pTree->setItemDelegate(m_pTree->m_pDelegate);
        }
        QObject::connect(m_pTree, &QTreeWidget::itemChanged, m_pTree,
                         [this](QTreeWidgetItem* _pItem, int) { m_qvecChanged.append(_pItem); });
        QObject::connect(m_pLine, &QLineEdit::textChanged, m_pLine,
                         [this](const QString& _qstrText) { Search(_qstrText); });

        const Qt::ItemFlags flags =
            Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate;
        m_pRoot = MakeRow(CONST_qstrRootId, QString(), CONST_qstrCommon, QIcon(qstrPic + "root_icon.png"), 1,
                          flags);
        QList<QTreeWidgetItem*> qlstGroups;
        for (int g = 0; g < _stCase.m_iGroups; ++g) {
            QTreeWidgetItem* pGroup =
                MakeRow(GroupId(g), CONST_qstrRootId, GroupText(g), iconGroup, 2, flags);
            QList<QTreeWidgetItem*> qlstChannels;
            for (int c = 0; c < CONST_iChannelsPerGroup; ++c) {
                QTreeWidgetItem* pChannel =
                    MakeRow(ChannelId(g, c), GroupId(g), ChannelText(g, c), m_iconOffline, 4, flags);
                m_qhashChannels.insert(ChannelId(g, c), pChannel);
                qlstChannels.append(pChannel);
            }
            pGroup->addChildren(qlstChannels);
            qlstGroups.append(pGroup);
        }
        m_pRoot->addChildren(qlstGroups);
        m_pTree->addTopLevelItem(m_pRoot);
        m_pRoot->setExpanded(true);
    }
    void ExpandAll() override { m_pTree->expandAll(); }
    void Status(const StatusMap& _qmapBatch) override
    {
        for (auto it = _qmapBatch.cbegin(); it != _qmapBatch.cend(); ++it) {
            if (QTreeWidgetItem* pItem = m_qhashChannels.value(it.key()))
                pItem->setIcon(0, it.value().second == 1 ? m_iconOnline : m_iconOffline);
        }
    }
    void CheckRoot(bool _blChecked) override
    {
        m_qvecChanged.clear();
        m_pRoot->setCheckState(0, _blChecked ? Qt::Checked : Qt::Unchecked);
    }
    QLineEdit* SearchLine() override { return m_pLine; }
    void ShowByName(const QString& _qstrName) override
    {
        // Matches and their ancestors stay, expanded; every other row is hidden.
        QSet<QTreeWidgetItem*> qsetKeep;
        for (QTreeWidgetItemIterator it(m_pTree); *it != nullptr; ++it) {
            if ((*it)->text(0).contains(_qstrName, Qt::CaseInsensitive)) {
                for (QTreeWidgetItem* pItem = *it; pItem != nullptr && !qsetKeep.contains(pItem);
                     pItem = pItem->parent())
                    qsetKeep.insert(pItem);
            }
        }
        for (QTreeWidgetItemIterator it(m_pTree); *it != nullptr; ++it) {
            const bool blKeep = qsetKeep.contains(*it);
            (*it)->setHidden(!blKeep);
            if (blKeep)
                (*it)->setExpanded(true);
        }
    }
    void Destroy() override
    {
        m_pWindow.reset();
        m_pTree = nullptr;
    }

protected:
    // One row: its id, the id of its parent (empty at the root), text, icon, type code and flags.
    virtual QTreeWidgetItem* MakeRow(const QString& _qstrId, const QString& _qstrParentId,
                                     const QString& _qstrText, const QIcon& _icon, int _iType,
                                     Qt::ItemFlags _flags)
    {
        Q_UNUSED(_qstrParentId)
        return FillRow(new QTreeWidgetItem, _qstrId, _qstrText, _icon, _iType, _flags);
    }
    static QTreeWidgetItem* FillRow(QTreeWidgetItem* pItem, const QString& _qstrId, const QString& _qstrText,
                                    const QIcon& _icon, int _iType, Qt::ItemFlags _flags)
    {
        pItem->setFlags(_flags);
        pItem->setCheckState(0, Qt::Unchecked);
        pItem->setText(0, _qstrText);
        pItem->setToolTip(0, _qstrText);
        pItem->setIcon(0, _icon);
        pItem->setData(0, Qt::UserRole + 1, _qstrId);
        pItem->setData(0, Qt::UserRole + 2, _iType);
        return pItem;
    }

private:
    void Search(const QString& _qstrText)
    {
        m_pList->clear();
        if (_qstrText.isEmpty()) {
            m_pList->hide();
            return;
        }
        for (QTreeWidgetItemIterator it(m_pRoot); *it != nullptr; ++it) {
            if (*it == m_pRoot)
                continue;
            if ((*it)->text(0).contains(_qstrText, Qt::CaseInsensitive)) {
                auto* pItem = new QListWidgetItem((*it)->text(0), m_pList);
                pItem->setData(Qt::UserRole, (*it)->data(0, Qt::UserRole + 1));
            }
        }
        m_pList->show();
    }

    std::unique_ptr<QWidget> m_pWindow;
    QLineEdit* m_pLine = nullptr;
    QListWidget* m_pList = nullptr;
    CLS_PlainTree* m_pTree = nullptr;
    QTreeWidgetItem* m_pRoot = nullptr;
    QIcon m_iconOnline;
    QIcon m_iconOffline;
    QHash<QString, QTreeWidgetItem*> m_qhashChannels;
    QVector<QTreeWidgetItem*> m_qvecChanged;
};

void TypeKey(QWidget* _pWidget, Qt::Key _key, const QString& _qstrText)
{
    QKeyEvent press(QEvent::KeyPress, _key, Qt::NoModifier, _qstrText);
    QApplication::sendEvent(_pWidget, &press);
    QKeyEvent release(QEvent::KeyRelease, _key, Qt::NoModifier, _qstrText);
    QApplication::sendEvent(_pWidget, &release);
}

} // namespace
