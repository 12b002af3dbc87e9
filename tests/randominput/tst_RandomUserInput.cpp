// Seeded random input on a device tree, as a user and a page give it at once: mouse clicks (with
// and without Ctrl and Shift), double and right clicks, hover, the wheel, keys on the tree, typing
// and keys in the search line, drops of the tree's own rows, and the page's calls (add, delete,
// check, status batches, expand, collapse, current row, rebuild, clear). After every batch of steps
// every node the tree lists (its rows, its node map, the search results, the selection) must answer
// its look-ups, and nothing may crash. A failure names the seed and the step; the seed is printed
// before each walk, so that a crash under a sanitizer names it too.
//
// WGT_RANDOM_SEEDS ("1,2,3") and WGT_RANDOM_STEPS replace the fixed defaults.

#include "CLS_TestDeviceTree.h"

#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QScrollBar>
#include <QToolButton>
#include <QtTest>

#include <memory>
#include <random>

using namespace CLS_DevTreeTestUtil;

namespace {

const QString CONST_qstrRoot = "custom_root_id";

QList<quint32> Seeds(const QList<quint32>& _qlstDefault)
{
    const QByteArray qbaSeeds = qgetenv("WGT_RANDOM_SEEDS");
    if (qbaSeeds.isEmpty())
        return _qlstDefault;
    QList<quint32> qlstSeeds;
    for (const QByteArray& qbaPart : qbaSeeds.split(','))
        qlstSeeds << qbaPart.trimmed().toUInt();
    return qlstSeeds;
}

int Steps(int _iDefault)
{
    bool blOk = false;
    const int iSteps = qEnvironmentVariableIntValue("WGT_RANDOM_STEPS", &blOk);
    return blOk && iSteps > 0 ? iSteps : _iDefault;
}

QVector<CLS_ItemButton> Buttons()
{
    QVector<CLS_ItemButton> qvecButtons(2);
    qvecButtons[0].m_qstrId = "preview";
    qvecButtons[0].m_qstrTooltip = "Live view";
    qvecButtons[1].m_qstrId = "playback";
    qvecButtons[1].m_qstrTooltip = "Playback";
    qvecButtons[1].m_blCheckable = true;
    return qvecButtons;
}

// One walk: a tree of _iGroups groups of _iChannels channels, driven by the seed.
class CLS_Walk
{
public:
    CLS_Walk(quint32 _uSeed, int _iGroups, int _iChannels)
        : m_rng(_uSeed), m_uSeed(_uSeed), m_iGroups(_iGroups), m_iChannels(_iChannels)
    {}

    // Runs the steps; an empty string when every check held, else what failed.
    QString Run(int _iSteps)
    {
        m_pTree = std::make_unique<CLS_TestDeviceTree>(nullptr, DEV_TREE_CUSTOM, true, true, false, true,
                                                       true, ITEM_BTN_SHOW_HOVER);
        m_pTree->resize(320, 480);
        m_pTree->show();
        if (!QTest::qWaitForWindowExposed(m_pTree.get()))
            return "the tree was never shown";
        QObject::connect(m_pTree.get(), &CLS_WgtDeviceTree::SignToolButtonClicked, m_pTree.get(),
                         [this](QString, CLS_CustomTreeNode, CLS_ItemButton) { ++m_iButtonClicks; });
        Rebuild();
        for (m_iStep = 1; m_iStep <= _iSteps; ++m_iStep) {
            Step();
            const bool blTyped = m_qstrLastOp == "typing in the search line";
            if (blTyped || m_iStep % 25 == 0 || m_iStep == _iSteps) {
                QCoreApplication::processEvents();
                const QString qstrFailure = blTyped ? CheckFreshResults() : Check();
                if (!qstrFailure.isEmpty())
                    return QString("seed %1, step %2 (%3): %4")
                        .arg(m_uSeed)
                        .arg(m_iStep)
                        .arg(m_qstrLastOp, qstrFailure);
            }
        }
        m_pTree.reset();
        return QString();
    }

    int m_iButtonClicks = 0;
    int m_iChecks = 0;      // look-ups checked over the walk
    int m_iMostRows = 0;    // most rows at a check
    int m_iResultsSeen = 0; // search result entries at the checks

private:
    int Pick(int _iCount) { return std::uniform_int_distribution<int>(0, qMax(0, _iCount - 1))(m_rng); }
    bool Chance(int _iPercent) { return Pick(100) < _iPercent; }

    CLS_WgtBaseTreeWidget* Base() const { return BaseOf(*m_pTree); }
    QWidget* Viewport() const { return Base()->viewport(); }
    QLineEdit* Line() const { return PanelOf(*m_pTree)->findChild<QLineEdit*>("qlineedtQueryInput"); }
    QListWidget* Results() const { return PanelOf(*m_pTree)->findChild<QListWidget*>("qlistWgtQueryResult"); }

    QPoint AnyPoint()
    {
        const QSize size = Viewport()->size();
        return QPoint(Pick(size.width()), Pick(size.height()));
    }
    Qt::KeyboardModifiers AnyModifiers()
    {
        static const Qt::KeyboardModifiers s_mods[] = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                                       Qt::ShiftModifier};
        return s_mods[Pick(4)];
    }
    QString AnyId()
    {
        if (m_pTree->m_qmapNodes.isEmpty() || Chance(5))
            return Chance(50) ? QString() : QString("unknown-%1").arg(Pick(10));
        auto it = m_pTree->m_qmapNodes.cbegin();
        std::advance(it, Pick(m_pTree->m_qmapNodes.size()));
        return it.key();
    }

    void Rebuild()
    {
        QMap<QString, CLS_CustomTreeNode> qmapNodes;
        for (int g = 0; g < m_iGroups; ++g) {
            const QString qstrGroup = QString("g%1").arg(g);
            CLS_CustomTreeNode group = MakeNode(qstrGroup, CONST_qstrRoot, 2, QString(), g);
            group.m_qstrName = QString("Group %1").arg(g);
            Add(qmapNodes, group);
            for (int c = 0; c < m_iChannels; ++c) {
                const QString qstrId = QString("c%1-%2").arg(g).arg(c);
                CLS_CustomTreeNode channel = MakeNode(qstrId, qstrGroup, 4, "dev-" + qstrId, c, Pick(3));
                channel.m_qstrName = QString("Cam %1 %2").arg(g).arg(c);
                channel.m_qstrExtend = QString("10.0.%1.%2").arg(g).arg(c);
                Add(qmapNodes, channel);
            }
        }
        m_pTree->Init(qmapNodes, "Site", {{4, Buttons()}});
    }

    void Drop()
    {
        std::unique_ptr<QMimeData> pData(m_pTree->CreateDragData({AnyId()}));
        const QPoint point = AnyPoint();
        QDragEnterEvent enter(point, Qt::MoveAction, pData.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Viewport(), &enter);
        QDragMoveEvent move(point, Qt::MoveAction, pData.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Viewport(), &move);
        QDropEvent drop(QPointF(point), Qt::MoveAction, pData.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Viewport(), &drop);
    }

    void Status()
    {
        QMap<QString, QPair<bool, int>> qmapBatch;
        for (int i = Pick(m_iGroups * m_iChannels) + 1; i > 0; --i)
            qmapBatch.insert(QString("dev-c%1-%2").arg(Pick(m_iGroups)).arg(Pick(m_iChannels)),
                             qMakePair(Chance(20), Pick(3)));
        // Status batches name channels by device id, as the status thread does.
        m_pTree->UpdateAllChannelsStatus(QVariant::fromValue(qmapBatch));
    }

    void AddNodes()
    {
        QVector<CLS_CustomTreeNode> qvecNodes;
        for (int i = Pick(4) + 1; i > 0; --i) {
            const QString qstrId = QString("n%1").arg(++m_iAdded);
            const bool blGroup = Chance(30);
            CLS_CustomTreeNode node = MakeNode(qstrId, Chance(20) ? CONST_qstrRoot : AnyId(), blGroup ? 2 : 4,
                                               blGroup ? QString() : "dev-" + qstrId, Pick(50), Pick(3));
            node.m_qstrName = QString("New %1").arg(m_iAdded);
            qvecNodes << node;
        }
        m_pTree->AddItems(QVariant::fromValue(qvecNodes));
    }

    void Key(QWidget* _pWidget)
    {
        static const Qt::Key s_keys[] = {Qt::Key_Up,    Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right,
                                         Qt::Key_Home,  Qt::Key_End,    Qt::Key_PageDown, Qt::Key_PageUp,
                                         Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape,   Qt::Key_Asterisk,
                                         Qt::Key_Plus,  Qt::Key_Minus,  Qt::Key_F,        Qt::Key_Tab};
        const Qt::Key key = s_keys[Pick(int(sizeof(s_keys) / sizeof(s_keys[0])))];
        QTest::keyClick(_pWidget, key, key == Qt::Key_F && Chance(50) ? Qt::ControlModifier : AnyModifiers());
    }

    void Step()
    {
        switch (Pick(24)) {
        case 0:
        case 1:
            m_qstrLastOp = "click";
            QTest::mouseClick(Viewport(), Qt::LeftButton, AnyModifiers(), AnyPoint());
            break;
        case 2:
            m_qstrLastOp = "double click";
            QTest::mouseDClick(Viewport(), Qt::LeftButton, Qt::NoModifier, AnyPoint());
            break;
        case 3:
            m_qstrLastOp = "right click";
            QTest::mouseClick(Viewport(), Qt::RightButton, Qt::NoModifier, AnyPoint());
            break;
        case 4:
        case 5: {
            m_qstrLastOp = "hover";
            const QPoint point = AnyPoint();
            QMouseEvent move(QEvent::MouseMove, point, Viewport()->mapToGlobal(point), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(Viewport(), &move);
            break;
        }
        case 6: {
            m_qstrLastOp = "wheel";
            const QPoint point = AnyPoint();
            QWheelEvent wheel(point, Viewport()->mapToGlobal(point), QPoint(),
                              QPoint(0, Chance(50) ? 120 : -120), Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(Viewport(), &wheel);
            break;
        }
        case 7:
        case 8:
            m_qstrLastOp = "key on the tree";
            Base()->setFocus();
            Key(Base());
            break;
        case 9:
            m_qstrLastOp = "typing in the search line";
            if (Line() != nullptr) {
                static const char* const s_texts[] = {"c", "cam 1", "1", "new", "10.0", "group 2", "x", " "};
                QTest::keyClicks(Line(), QString::fromLatin1(s_texts[Pick(8)]));
            }
            break;
        case 10:
            m_qstrLastOp = "key in the search line";
            if (Line() != nullptr) {
                static const Qt::Key s_keys[] = {Qt::Key_Backspace, Qt::Key_Down, Qt::Key_Up, Qt::Key_Return,
                                                 Qt::Key_Escape};
                QWidget* pTarget = Chance(70) ? static_cast<QWidget*>(Line()) : Results();
                QTest::keyClick(pTarget, s_keys[Pick(5)]);
            }
            break;
        case 11:
            m_qstrLastOp = "drop of an own row";
            Drop();
            break;
        case 12:
            m_qstrLastOp = "AddItems";
            AddNodes();
            break;
        case 13:
            m_qstrLastOp = "DeleteItems";
            m_pTree->DeleteItems({AnyId(), AnyId()}, Chance(50));
            break;
        case 14:
            m_qstrLastOp = "SetItemCheckStatus";
            m_pTree->SetItemCheckStatus(AnyId(), Chance(50) ? Qt::Checked : Qt::Unchecked, Chance(50));
            break;
        case 15:
            m_qstrLastOp = "status batch";
            Status();
            break;
        case 16:
            m_qstrLastOp = Chance(50) ? "ExpandAll" : "CollapseAll";
            if (m_qstrLastOp == "ExpandAll")
                m_pTree->ExpandAll();
            else
                m_pTree->CollapseAll();
            break;
        case 17:
            m_qstrLastOp = "SetCurrentItem";
            m_pTree->SetCurrentItem(AnyId(), Chance(50));
            break;
        case 18:
            m_qstrLastOp = "multi-select";
            m_pTree->SetMultiSelect(Chance(50));
            break;
        case 19:
            m_qstrLastOp = "scroll bar";
            Base()->verticalScrollBar()->setValue(Pick(Base()->verticalScrollBar()->maximum() + 1));
            break;
        case 20:
            if (Chance(10)) {
                m_qstrLastOp = Chance(50) ? "rebuild" : "Clear";
                if (m_qstrLastOp == "rebuild")
                    Rebuild();
                else
                    m_pTree->Clear();
            } else {
                m_qstrLastOp = "check batch timeout";
                m_pTree->SlotCheckedSignalWatcherTimeout();
            }
            break;
        case 21: {
            m_qstrLastOp = "click on a shown tool button";
            QList<QToolButton*> qlstShown;
            for (QToolButton* pButton : Viewport()->findChildren<QToolButton*>()) {
                if (pButton->isVisible())
                    qlstShown << pButton;
            }
            if (!qlstShown.isEmpty()) {
                QToolButton* pButton = qlstShown.at(Pick(qlstShown.size()));
                QTest::mouseClick(pButton, Qt::LeftButton, Qt::NoModifier, pButton->rect().center());
            }
            break;
        }
        default:
            m_qstrLastOp = "events";
            QCoreApplication::processEvents();
            break;
        }
    }

    // The entries of a search just typed name rows that are there. (Entries stay as they are when
    // rows go later, until the line changes.)
    QString CheckFreshResults()
    {
        QListWidget* pResults = Results();
        if (pResults == nullptr)
            return QString();
        m_iResultsSeen += pResults->count();
        for (int i = 0; i < pResults->count(); ++i) {
            const QVariant varId = pResults->item(i)->data(Qt::UserRole);
            if (varId.isValid() && Base()->GetNodeById(varId.toString()) == nullptr)
                return "search result " + varId.toString() + " names no row";
        }
        return QString();
    }

    // Every node the tree lists answers its look-ups.
    QString Check()
    {
        CLS_WgtBaseTreeWidget* pBase = Base();
        int iRows = 0;
        // The rows: each one's id is a node of the map (the root too), found again by id.
        for (QTreeWidgetItemIterator it(pBase); *it != nullptr; ++it) {
            CLS_TreeItem clsItem;
            if (pBase->GetBindData(*it, clsItem) != 0)
                return "a row without its record";
            const QString& qstrId = clsItem.m_qstrId;
            if (pBase->GetNodeById(qstrId) != *it)
                return "row " + qstrId + " is not found by its id";
            CLS_CustomTreeNode node;
            if (m_pTree->GetItemById(qstrId, node) != 0 || node.m_qstrTreeId != qstrId)
                return "row " + qstrId + " has no node";
            Qt::CheckState iState = Qt::Unchecked;
            if (m_pTree->GetItemCheckStatus(qstrId, iState) != 0)
                return "row " + qstrId + " has no check state";
            if ((*it)->parent() != nullptr) {
                CLS_CustomTreeNode parent;
                if (m_pTree->GetParent(qstrId, parent) != 0)
                    return "row " + qstrId + " has no parent node";
            }
            ++m_iChecks;
            ++iRows;
        }
        m_iMostRows = qMax(m_iMostRows, iRows);
        // The node map: each node is found by its id, and by its device id when it has one.
        for (auto it = m_pTree->m_qmapNodes.cbegin(); it != m_pTree->m_qmapNodes.cend(); ++it) {
            CLS_CustomTreeNode node;
            if (m_pTree->GetItemById(it.key(), node) != 0 || node.m_qstrTreeId != it.key())
                return "node " + it.key() + " is not found by its id";
            if (!it.value().m_qstrDevId.isEmpty() &&
                m_pTree->GetItemByDevId(it.value().m_qstrDevId, node) != 0)
                return "node " + it.key() + " is not found by its device id";
            ++m_iChecks;
        }
        // The selection and the current row name rows that are there.
        QVector<CLS_CustomTreeNode> qvecSelected;
        if (m_pTree->GetSelectedNodes(qvecSelected) != 0)
            return "GetSelectedNodes failed";
        for (const CLS_CustomTreeNode& node : qAsConst(qvecSelected)) {
            if (pBase->GetNodeById(node.m_qstrTreeId) == nullptr)
                return "selected node " + node.m_qstrTreeId + " has no row";
        }
        CLS_CustomTreeNode current;
        if (m_pTree->GetCurrentItem(current) == 0 && pBase->GetNodeById(current.m_qstrTreeId) == nullptr)
            return "the current node " + current.m_qstrTreeId + " has no row";
        return QString();
    }

    std::mt19937 m_rng;
    quint32 m_uSeed;
    int m_iGroups;
    int m_iChannels;
    int m_iStep = 0;
    int m_iAdded = 0;
    QString m_qstrLastOp;
    std::unique_ptr<CLS_TestDeviceTree> m_pTree;
};

} // namespace

class tst_RandomUserInput : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerLookUpsOfEveryListedNodeUnderRandomInputOnSmallTree();
    void shouldAnswerLookUpsOfEveryListedNodeUnderRandomInputOnLargeTree();

private:
    void Walk(const QList<quint32>& _qlstSeeds, int _iSteps, int _iGroups, int _iChannels);
};

void tst_RandomUserInput::Walk(const QList<quint32>& _qlstSeeds, int _iSteps, int _iGroups, int _iChannels)
{
    for (quint32 uSeed : _qlstSeeds) {
        std::fprintf(stderr, "random input: seed %u, %d steps, %d x %d channels\n", uSeed, _iSteps, _iGroups,
                     _iChannels);
        CLS_Walk walk(uSeed, _iGroups, _iChannels);
        const QString qstrFailure = walk.Run(_iSteps);
        QVERIFY2(qstrFailure.isEmpty(), qPrintable(qstrFailure));
        QVERIFY2(walk.m_iChecks > 0, qPrintable(QString("seed %1 checked nothing").arg(uSeed)));
        qInfo("seed %u: %d look-ups checked, %d most rows, %d tool button clicks, %d search results seen",
              uSeed, walk.m_iChecks, walk.m_iMostRows, walk.m_iButtonClicks, walk.m_iResultsSeen);
    }
}

void tst_RandomUserInput::shouldAnswerLookUpsOfEveryListedNodeUnderRandomInputOnSmallTree()
{
    Walk(Seeds({1, 2, 3, 4}), Steps(3000), 3, 4);
}

void tst_RandomUserInput::shouldAnswerLookUpsOfEveryListedNodeUnderRandomInputOnLargeTree()
{
    // 70 groups of 32 channels: 2,311 rows, tool bars made on demand under the mouse.
    Walk(Seeds({11, 12}), Steps(3000), 70, 32);
}

QTEST_MAIN(tst_RandomUserInput)
#include "tst_RandomUserInput.moc"
