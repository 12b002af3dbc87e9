// The reference device layer libDevManage.so: its objects as the gateway hands them out, the
// operations of the resource tree, the device factory and the custom tree, the control interface,
// and its safety for a reader thread while the installation changes.

#include "CLS_DevManage.h"
#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "DevManageControl.h"
#include "I_CustomTreeManage.h"

#include <QtTest>

#include <atomic>
#include <cstring>
#include <dlfcn.h>
#include <thread>

// The exported object functions, called directly to compare with what the gateway gives.
extern "C" CLS_IResourceTree* GetResourceTree();
extern "C" CLS_IDevFactory* GetDevFactory();
extern "C" I_CustomTreeManage* GetCustomTree();

namespace {

CLS_IResourceTree* Tree()
{
    return DevManage::GetResourceTree();
}

CLS_IDevFactory* Factory()
{
    return DevManage::GetDevFactory();
}

I_CustomTreeManage* Custom()
{
    return DevManage::GetCustomTree();
}

QString LastCall(const char* _pOperation)
{
    char szBuffer[512] = {0};
    if (DevManageCtl_LastCall(_pOperation, szBuffer, sizeof(szBuffer)) < 0) {
        return QStringLiteral("<never called>");
    }
    return QString::fromUtf8(szBuffer);
}

// An item as "id:type:parent:status", "<expired>" or "<empty>".
QString ItemText(const std::weak_ptr<STRCT_VideoItem>& _wpItem)
{
    std::weak_ptr<STRCT_VideoItem> wpEmpty;
    if (!_wpItem.owner_before(wpEmpty) && !wpEmpty.owner_before(_wpItem)) {
        return QStringLiteral("<empty>");
    }
    std::shared_ptr<STRCT_VideoItem> spItem = _wpItem.lock();
    if (!spItem) {
        return QStringLiteral("<expired>");
    }
    return QString("%1:%2:%3:%4")
        .arg(QString::fromStdString(spItem->m_strId))
        .arg(spItem->GetType())
        .arg(QString::fromStdString(spItem->m_strParentId))
        .arg(spItem->m_iStatus);
}

QStringList ItemTexts(const QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems)
{
    QStringList qlstTexts;
    for (const auto& wpItem : _qvecItems) {
        qlstTexts << ItemText(wpItem);
    }
    return qlstTexts;
}

// Root, one host with two channels and an alarm input, a decoder with an output.
void LoadSmall()
{
    DevManageCtl_AddGroup("resource_root_id", "All", "", 0, "");
    DevManageCtl_AddHost("host1", "Host 1", "resource_root_id", 1, 1, "t_host1");
    DevManageCtl_AddChannel("ch2", "Ch 2", "host1", 2, 0, 2, "t_ch2");
    DevManageCtl_AddChannel("ch1", "Ch 1", "host1", 1, 1, 1, "t_ch1");
    DevManageCtl_AddItem(5, "ai1", "Alarm 1", "host1", 3, 1, 1, "t_ai1");
    DevManageCtl_AddItem(12, "dec1", "Decoder", "resource_root_id", 2, 1, 0, "");
    DevManageCtl_AddItem(13, "out1", "Out 1", "dec1", 1, 1, 4, "t_out1");
}

} // namespace

class tst_ReferenceDevManage : public QObject
{
    Q_OBJECT

private slots:
    void init();

    // objects
    void shouldHandOutItsObjectsThroughTheGateway();
    void shouldLoadFromTheLibraryFolder();
    void shouldGiveNullObjectsWhenSwitchedOff_data();
    void shouldGiveNullObjectsWhenSwitchedOff();
    void shouldStartEmpty();

    // records and items
    void shouldMakeRecordsOfEachKind_data();
    void shouldMakeRecordsOfEachKind();
    void shouldRefuseBadItems_data();
    void shouldRefuseBadItems();
    void shouldKeyAllItemsByTreeIdWithRootUnderItsId();
    void shouldFindItemById();
    void shouldFindChannelOfDeviceByNumber();
    void shouldListItemsOfTypeInInsertionOrder();
    void shouldListIdsOfType();
    void shouldListChildrenInInsertionOrder();
    void shouldReplaceItemOnChange();
    void shouldExpireWeakPointerOnRemove();

    // device factory
    void shouldAnswerIsIdAdmittedPerIdAndByDefault();
    void shouldAnswerImageChannelQueryPerDevice();

    // controls
    void shouldFailNextCallsWithNegativeCode_data();
    void shouldFailNextCallsWithNegativeCode();
    void shouldCountCallsAndKeepLastArguments();
    void shouldHandOutExpiredPointersWhereMarkedStale();
    void shouldOpenListsWithStaleEntries();
    void shouldChangeStatusOnceAtChannelLookup();
    void shouldForgetEverythingOnReset();

    // custom tree
    void shouldGiveNodesOfEachRoot_data();
    void shouldGiveNodesOfEachRoot();
    void shouldReplaceAndRemoveCustomNodes();
    void shouldLoadSampleInstallation();

    // threads
    void shouldServeReaderThreadWhileInstallationChanges();
};

void tst_ReferenceDevManage::init()
{
    DevManageCtl_Reset();
}

// ---- objects --------------------------------------------------------------------------------

void tst_ReferenceDevManage::shouldHandOutItsObjectsThroughTheGateway()
{
    QVERIFY(Tree() != nullptr);
    QCOMPARE(Tree(), ::GetResourceTree());
    QVERIFY(Factory() != nullptr);
    QCOMPARE(Factory(), ::GetDevFactory());
    QVERIFY(Custom() != nullptr);
    QCOMPARE(Custom(), ::GetCustomTree());
    QVERIFY(qobject_cast<I_CustomTreeManage*>(static_cast<QObject*>(Custom())) != nullptr);
    auto pFunGetUtil = reinterpret_cast<void* (*)()>(DevManage::GetModuleFun("GetUtil", ""));
    QVERIFY(pFunGetUtil != nullptr);
    QVERIFY(pFunGetUtil() == nullptr);
}

void tst_ReferenceDevManage::shouldLoadFromTheLibraryFolder()
{
    Dl_info dlInfo;
    QVERIFY(0 != dladdr(DevManage::GetModuleFun("GetResourceTree", ""), &dlInfo));
    const QString qstrFile = QString::fromLocal8Bit(dlInfo.dli_fname);
    QCOMPARE(QFileInfo(qstrFile).fileName(), QStringLiteral("libDevManage.so"));
    // Beside the widget library.
    QVERIFY(0 != dladdr(reinterpret_cast<void*>(&DevManage::GetResourceTree), &dlInfo));
    QCOMPARE(QFileInfo(qstrFile).canonicalPath(),
             QFileInfo(QString::fromLocal8Bit(dlInfo.dli_fname)).canonicalPath());
}

void tst_ReferenceDevManage::shouldGiveNullObjectsWhenSwitchedOff_data()
{
    QTest::addColumn<QString>("qstrFunction");

    QTest::newRow("resource tree") << "GetResourceTree";
    QTest::newRow("device factory") << "GetDevFactory";
    QTest::newRow("custom tree") << "GetCustomTree";
}

void tst_ReferenceDevManage::shouldGiveNullObjectsWhenSwitchedOff()
{
    QFETCH(QString, qstrFunction);

    QCOMPARE(DevManageCtl_SetObjectAvailable(qstrFunction.toUtf8().constData(), 0), 0);

    QStringList qlstObjects;
    qlstObjects << (Tree() ? "tree" : "-") << (Factory() ? "factory" : "-") << (Custom() ? "custom" : "-");
    QStringList qlstExpected{"tree", "factory", "custom"};
    qlstExpected[qstrFunction == "GetResourceTree" ? 0 : qstrFunction == "GetDevFactory" ? 1 : 2] = "-";
    QCOMPARE(qlstObjects, qlstExpected);
    QCOMPARE(DevManageCtl_CallCount(qstrFunction.toUtf8().constData()), 1);
    QCOMPARE(DevManageCtl_SetObjectAvailable("GetUtil", 0), -1);
}

void tst_ReferenceDevManage::shouldStartEmpty()
{
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    QCOMPARE(Tree()->GetAllItems(qmapItems).m_iCode, 0);
    QCOMPARE(Custom()->GetAllNodes(qmapNodes, 0).m_iCode, 0);

    QVERIFY(qmapItems.isEmpty());
    QVERIFY(qmapNodes.isEmpty());
    QCOMPARE(DevManageCtl_ItemCount(), 0);
}

// ---- records and items ----------------------------------------------------------------------

void tst_ReferenceDevManage::shouldMakeRecordsOfEachKind_data()
{
    QTest::addColumn<int>("iType");
    QTest::addColumn<bool>("blChannelLike");

    QTest::newRow("group") << 2 << false;
    QTest::newRow("host") << 3 << false;
    QTest::newRow("channel") << 4 << true;
    QTest::newRow("alarm input") << 5 << true;
    QTest::newRow("alarm output") << 6 << true;
    QTest::newRow("decoder") << 12 << false;
    QTest::newRow("decoder output") << 13 << true;
    QTest::newRow("decoder input") << 17 << true;
}

void tst_ReferenceDevManage::shouldMakeRecordsOfEachKind()
{
    QFETCH(int, iType);
    QFETCH(bool, blChannelLike);

    QCOMPARE(DevManageCtl_AddItem(iType, "x", "X", "p", 3, 1, 42, ""), 0);

    std::weak_ptr<STRCT_VideoItem> wpItem;
    QCOMPARE(Tree()->GetItem(wpItem, "x").m_iCode, 0);
    std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
    QVERIFY(spItem);
    QCOMPARE(spItem->GetType(), iType);
    QCOMPARE(QString::fromStdString(spItem->m_strTreeId), QStringLiteral("x")); // empty tree id: the id
    QCOMPARE(spItem->m_iOrderNo, 3);
    QCOMPARE(spItem->m_iDevBindType, -1);
    if (blChannelLike) {
        // The tree widgets read the channel number as the first int behind the base.
        int iChannelNo = 0;
        std::memcpy(&iChannelNo, reinterpret_cast<const char*>(spItem.get()) + sizeof(STRCT_VideoItem),
                    sizeof(int));
        QCOMPARE(iChannelNo, 42);
    }
}

void tst_ReferenceDevManage::shouldRefuseBadItems_data()
{
    QTest::addColumn<int>("iType");
    QTest::addColumn<QByteArray>("qbaId");

    QTest::newRow("empty id") << 4 << QByteArray();
    QTest::newRow("id already present") << 4 << QByteArray("dup");
    QTest::newRow("base type") << 1 << QByteArray("x");
    QTest::newRow("type of this library") << 7 << QByteArray("x");
}

void tst_ReferenceDevManage::shouldRefuseBadItems()
{
    QFETCH(int, iType);
    QFETCH(QByteArray, qbaId);
    DevManageCtl_AddChannel("dup", "Dup", "", 0, 1, 1, "");

    QCOMPARE(DevManageCtl_AddItem(iType, qbaId.isNull() ? nullptr : qbaId.constData(), "X", "", 0, 0, 0, ""),
             -1);

    QCOMPARE(DevManageCtl_ItemCount(), 1);
}

void tst_ReferenceDevManage::shouldKeyAllItemsByTreeIdWithRootUnderItsId()
{
    LoadSmall();
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    qmapItems.insert("kept", std::weak_ptr<STRCT_VideoItem>());

    QCOMPARE(Tree()->GetAllItems(qmapItems).m_iCode, 0);

    QCOMPARE(qmapItems.keys(), QStringList({"dec1", "kept", "resource_root_id", "t_ai1", "t_ch1", "t_ch2",
                                            "t_host1", "t_out1"}));
    QCOMPARE(ItemText(qmapItems.value("resource_root_id")), QStringLiteral("resource_root_id:2::0"));
    QCOMPARE(ItemText(qmapItems.value("t_ch1")), QStringLiteral("ch1:4:host1:1"));
}

void tst_ReferenceDevManage::shouldFindItemById()
{
    LoadSmall();
    std::weak_ptr<STRCT_VideoItem> wpItem;
    std::weak_ptr<STRCT_VideoItem> wpMissing;

    QCOMPARE(Tree()->GetItem(wpItem, "ch2").m_iCode, 0);
    QVERIFY(Tree()->GetItem(wpMissing, "t_ch2").m_iCode < 0); // by resource id, not tree id

    QCOMPARE(ItemText(wpItem), QStringLiteral("ch2:4:host1:0"));
    QCOMPARE(ItemText(wpMissing), QStringLiteral("<empty>"));
}

void tst_ReferenceDevManage::shouldFindChannelOfDeviceByNumber()
{
    LoadSmall();
    std::weak_ptr<STRCT_VideoItem> wpById, wpByNumber, wpAlarm, wpNone;

    QCOMPARE(Tree()->GetItemOfChannel(wpById, "ch2", -1, 0).m_iCode, 0);
    QCOMPARE(Tree()->GetItemOfChannel(wpByNumber, "host1", 1, 0).m_iCode, 0);
    QCOMPARE(Tree()->GetItemOfChannel(wpAlarm, "dec1", 4, 0).m_iCode, 0);
    QVERIFY(Tree()->GetItemOfChannel(wpNone, "host1", 9, 0).m_iCode < 0);

    QCOMPARE(ItemText(wpById), QStringLiteral("ch2:4:host1:0"));
    QCOMPARE(ItemText(wpByNumber), QStringLiteral("ch1:4:host1:1"));
    QCOMPARE(ItemText(wpAlarm), QStringLiteral("out1:13:dec1:1"));
    QCOMPARE(ItemText(wpNone), QStringLiteral("<empty>"));
}

void tst_ReferenceDevManage::shouldListItemsOfTypeInInsertionOrder()
{
    LoadSmall();
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecAll, qvecFiltered, qvecNone;

    QCOMPARE(Tree()->ListItemsOfType(qvecAll, 4, QVector<QString>()).m_iCode, 0);
    QCOMPARE(Tree()->ListItemsOfType(qvecFiltered, 4, QVector<QString>({"ch1", "ai1"})).m_iCode, 0);
    QCOMPARE(Tree()->ListItemsOfType(qvecNone, 6, QVector<QString>()).m_iCode, 0);

    QCOMPARE(ItemTexts(qvecAll), QStringList({"ch2:4:host1:0", "ch1:4:host1:1"}));
    QCOMPARE(ItemTexts(qvecFiltered), QStringList({"ch1:4:host1:1"}));
    QVERIFY(qvecNone.isEmpty());
}

void tst_ReferenceDevManage::shouldListIdsOfType()
{
    LoadSmall();
    QVector<QString> qvecIds{"kept"};

    QCOMPARE(Tree()->ListIdsOfType(4, qvecIds).m_iCode, 0);

    QCOMPARE(qvecIds, QVector<QString>({"kept", "ch2", "ch1"}));
}

void tst_ReferenceDevManage::shouldListChildrenInInsertionOrder()
{
    LoadSmall();
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecChildren, qvecNone;

    QCOMPARE(Tree()->ListChildren(qvecChildren, "host1").m_iCode, 0);
    QCOMPARE(Tree()->ListChildren(qvecNone, "ch1").m_iCode, 0);

    QCOMPARE(ItemTexts(qvecChildren), QStringList({"ch2:4:host1:0", "ch1:4:host1:1", "ai1:5:host1:1"}));
    QVERIFY(qvecNone.isEmpty());
}

void tst_ReferenceDevManage::shouldReplaceItemOnChange()
{
    LoadSmall();
    std::weak_ptr<STRCT_VideoItem> wpBefore;
    Tree()->GetItem(wpBefore, "ch1");
    std::shared_ptr<STRCT_VideoItem> spHeld = wpBefore.lock(); // a reader in the middle of its read

    QCOMPARE(DevManageCtl_SetStatus("ch1", 0), 0);
    QCOMPARE(DevManageCtl_SetName("ch1", "Renamed"), 0);
    QCOMPARE(DevManageCtl_SetDevBindType("ch1", 3), 0);

    QCOMPARE(spHeld->m_iStatus, 1); // the held object is left whole
    QCOMPARE(QString::fromStdString(spHeld->m_strName), QStringLiteral("Ch 1"));
    spHeld.reset();
    QVERIFY(wpBefore.expired());
    std::weak_ptr<STRCT_VideoItem> wpAfter;
    Tree()->GetItem(wpAfter, "ch1");
    std::shared_ptr<STRCT_VideoItem> spAfter = wpAfter.lock();
    QCOMPARE(spAfter->m_iStatus, 0);
    QCOMPARE(QString::fromStdString(spAfter->m_strName), QStringLiteral("Renamed"));
    QCOMPARE(spAfter->m_iDevBindType, 3);
    int iChannelNo = 0;
    std::memcpy(&iChannelNo, reinterpret_cast<const char*>(spAfter.get()) + sizeof(STRCT_VideoItem),
                sizeof(int));
    QCOMPARE(iChannelNo, 1); // a copy of the whole record
    int iStatus = -1;
    QCOMPARE(DevManageCtl_GetStatus("ch1", &iStatus), 0);
    QCOMPARE(iStatus, 0);
    QCOMPARE(DevManageCtl_SetStatus("nowhere", 1), -1);
}

void tst_ReferenceDevManage::shouldExpireWeakPointerOnRemove()
{
    LoadSmall();
    std::weak_ptr<STRCT_VideoItem> wpItem;
    Tree()->GetItem(wpItem, "ch2");

    QCOMPARE(DevManageCtl_RemoveItem("ch2"), 0);

    QVERIFY(wpItem.expired());
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecChildren;
    Tree()->ListChildren(qvecChildren, "host1");
    QCOMPARE(ItemTexts(qvecChildren), QStringList({"ch1:4:host1:1", "ai1:5:host1:1"}));
    std::weak_ptr<STRCT_VideoItem> wpGone;
    QVERIFY(Tree()->GetItem(wpGone, "ch2").m_iCode < 0);
    QCOMPARE(DevManageCtl_RemoveItem("ch2"), -1);
    QCOMPARE(DevManageCtl_ItemCount(), 6);
}

// ---- device factory -------------------------------------------------------------------------

void tst_ReferenceDevManage::shouldAnswerIsIdAdmittedPerIdAndByDefault()
{
    QVERIFY(Factory()->IsIdAdmitted("any"));

    DevManageCtl_SetIdAdmitted("one", 0);
    QVERIFY(!Factory()->IsIdAdmitted("one"));
    QVERIFY(Factory()->IsIdAdmitted("other"));

    DevManageCtl_SetIdAdmitted(nullptr, 0);
    DevManageCtl_SetIdAdmitted("two", 1);
    QVERIFY(!Factory()->IsIdAdmitted("other"));
    QVERIFY(Factory()->IsIdAdmitted("two"));
}

void tst_ReferenceDevManage::shouldAnswerImageChannelQueryPerDevice()
{
    DevManageCtl_SetDeviceParam("ch1", 1);
    QMap<QString, QString> qmapValues;
    QString qstrValue;

    QCOMPARE(Factory()->QueryDeviceParam("ch1", 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue), 1);
    QCOMPARE(qstrValue, QStringLiteral("1"));
    QCOMPARE(qmapValues.value("value"), QStringLiteral("1"));
    QCOMPARE(Factory()->QueryDeviceParam("ch2", 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue), 0);
    DevManageCtl_SetDeviceParam("", 4);
    QCOMPARE(Factory()->QueryDeviceParam("ch2", 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue), 4);
    QCOMPARE(Factory()->QueryDeviceParam("ch1", 0, 10073, qmapValues, qstrValue), -1);
}

// ---- controls -------------------------------------------------------------------------------

void tst_ReferenceDevManage::shouldFailNextCallsWithNegativeCode_data()
{
    QTest::addColumn<QString>("qstrOperation");

    for (const char* pOperation :
         {"GetAllItems", "GetItem", "GetItemOfChannel", "ListItemsOfType", "ListIdsOfType", "ListChildren",
          "QueryDeviceParam", "GetAllNodes", "GetNodesOfRoot"}) {
        QTest::newRow(pOperation) << QString(pOperation);
    }
}

void tst_ReferenceDevManage::shouldFailNextCallsWithNegativeCode()
{
    QFETCH(QString, qstrOperation);
    DevManageCtl_LoadSample();
    // One call of the operation: its code, and how much it wrote.
    auto call = [&]() -> QString {
        QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
        QMap<QString, CLS_CustomTreeNode> qmapNodes;
        QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
        QVector<QString> qvecIds;
        std::weak_ptr<STRCT_VideoItem> wpItem;
        QMap<QString, QString> qmapValues;
        QString qstrValue;
        int iCode = 0;
        if (qstrOperation == "GetAllItems")
            iCode = Tree()->GetAllItems(qmapItems).m_iCode;
        else if (qstrOperation == "GetItem")
            iCode = Tree()->GetItem(wpItem, "host1_ch1").m_iCode;
        else if (qstrOperation == "GetItemOfChannel")
            iCode = Tree()->GetItemOfChannel(wpItem, "host1_ch1", -1, 0).m_iCode;
        else if (qstrOperation == "ListItemsOfType")
            iCode = Tree()->ListItemsOfType(qvecItems, 4, QVector<QString>()).m_iCode;
        else if (qstrOperation == "ListIdsOfType")
            iCode = Tree()->ListIdsOfType(4, qvecIds).m_iCode;
        else if (qstrOperation == "ListChildren")
            iCode = Tree()->ListChildren(qvecItems, "host1").m_iCode;
        else if (qstrOperation == "QueryDeviceParam")
            iCode = Factory()->QueryDeviceParam("host1_ch1", 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue);
        else if (qstrOperation == "GetAllNodes")
            iCode = Custom()->GetAllNodes(qmapNodes, 0).m_iCode;
        else
            iCode = Custom()->GetNodesOfRoot("favorite_root_id", qmapNodes, 0).m_iCode;
        const int iWritten = qmapItems.size() + qmapNodes.size() + qvecItems.size() + qvecIds.size() +
                             (wpItem.expired() ? 0 : 1) + qmapValues.size();
        return QString("%1/%2").arg(iCode).arg(iWritten > 0 ? "out" : "none");
    };
    const QString qstrGood = call();

    QCOMPARE(DevManageCtl_FailNext(qstrOperation.toUtf8().constData(), 2, -7), 0);

    QCOMPARE(QStringList({call(), call(), call()}), QStringList({"-7/none", "-7/none", qstrGood}));
    QVERIFY(qstrGood.endsWith("/out"));
    QVERIFY(!qstrGood.startsWith("-"));
    QCOMPARE(DevManageCtl_CallCount(qstrOperation.toUtf8().constData()), 4);
}

void tst_ReferenceDevManage::shouldCountCallsAndKeepLastArguments()
{
    LoadSmall();
    std::weak_ptr<STRCT_VideoItem> wpItem;
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
    QMap<QString, QString> qmapValues{{"a", "b"}};
    QString qstrValue("v");
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    Tree()->GetItemOfChannel(wpItem, "ch1", -1, 0);
    Tree()->GetItemOfChannel(wpItem, "host1", 2, 5);
    Tree()->ListItemsOfType(qvecItems, 4, QVector<QString>({"x", "y"}));
    Factory()->QueryDeviceParam("ch1", 3, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue);
    Factory()->IsIdAdmitted("ch9");
    Custom()->GetNodesOfRoot("favorite_root_id", qmapNodes, 0);

    QCOMPARE(DevManageCtl_CallCount("GetItemOfChannel"), 2);
    QCOMPARE(LastCall("GetItemOfChannel"), QStringLiteral("host1|2|5"));
    QCOMPARE(LastCall("ListItemsOfType"), QStringLiteral("4|2"));
    QCOMPARE(LastCall("QueryDeviceParam"), QStringLiteral("ch1|3|10072|1|v"));
    QCOMPARE(LastCall("IsIdAdmitted"), QStringLiteral("ch9"));
    QCOMPARE(LastCall("GetNodesOfRoot"), QStringLiteral("favorite_root_id|0"));
    QCOMPARE(LastCall("ListChildren"), QStringLiteral("<never called>"));
    QCOMPARE(DevManageCtl_CallCount("ListChildren"), 0);
    QCOMPARE(DevManageCtl_CallCount("NoSuchOperation"), -1);
    QCOMPARE(DevManageCtl_FailNext("IsIdAdmitted", 1, -1), -1);
    // The length comes back whole, the text cut to the buffer.
    char szShort[4] = {'x', 'x', 'x', 'x'};
    QCOMPARE(DevManageCtl_LastCall("GetItemOfChannel", szShort, sizeof(szShort)), 9);
    QCOMPARE(QByteArray(szShort), QByteArray("hos"));
}

void tst_ReferenceDevManage::shouldHandOutExpiredPointersWhereMarkedStale()
{
    LoadSmall();
    QCOMPARE(DevManageCtl_SetStale("ch1", DEVMANAGECTL_STALE_IN_LISTS | DEVMANAGECTL_STALE_IN_GETITEM), 0);
    std::weak_ptr<STRCT_VideoItem> wpGet, wpChannel;
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecOfType, qvecChildren;
    QVector<QString> qvecIds;

    QCOMPARE(Tree()->GetItem(wpGet, "ch1").m_iCode, 0);
    QCOMPARE(Tree()->GetItemOfChannel(wpChannel, "ch1", -1, 0).m_iCode, 0);
    Tree()->ListItemsOfType(qvecOfType, 4, QVector<QString>());
    Tree()->ListChildren(qvecChildren, "host1");
    Tree()->ListIdsOfType(4, qvecIds);

    QCOMPARE(ItemText(wpGet), QStringLiteral("<expired>"));
    QCOMPARE(ItemText(wpChannel), QStringLiteral("ch1:4:host1:1"));
    QCOMPARE(ItemTexts(qvecOfType), QStringList({"ch2:4:host1:0", "<expired>"}));
    QCOMPARE(ItemTexts(qvecChildren), QStringList({"ch2:4:host1:0", "<expired>", "ai1:5:host1:1"}));
    QCOMPARE(qvecIds, QVector<QString>({"ch2", "ch1"}));
    QCOMPARE(DevManageCtl_SetStale("nowhere", 1), -1);
}

void tst_ReferenceDevManage::shouldOpenListsWithStaleEntries()
{
    LoadSmall();
    DevManageCtl_SetStaleEntries(2);
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecOfType, qvecChildren;

    Tree()->ListItemsOfType(qvecOfType, 4, QVector<QString>());
    Tree()->ListChildren(qvecChildren, "dec1");

    QCOMPARE(ItemTexts(qvecOfType),
             QStringList({"<expired>", "<expired>", "<empty>", "ch2:4:host1:0", "ch1:4:host1:1"}));
    QCOMPARE(ItemTexts(qvecChildren), QStringList({"<expired>", "<expired>", "<empty>", "out1:13:dec1:1"}));
}

void tst_ReferenceDevManage::shouldChangeStatusOnceAtChannelLookup()
{
    LoadSmall();
    QCOMPARE(DevManageCtl_SetStatusOnLookup("ch1", 5), 0);
    std::weak_ptr<STRCT_VideoItem> wpBefore, wpFirst, wpSecond;
    Tree()->GetItem(wpBefore, "ch1");

    Tree()->GetItemOfChannel(wpFirst, "ch1", -1, 0);
    DevManageCtl_SetStatus("ch1", 1);
    Tree()->GetItemOfChannel(wpSecond, "ch1", -1, 0);

    QCOMPARE(ItemText(wpBefore), QStringLiteral("<expired>")); // replaced, as any change
    QCOMPARE(ItemText(wpFirst), QStringLiteral("<expired>"));
    QCOMPARE(ItemText(wpSecond), QStringLiteral("ch1:4:host1:1")); // once only
}

void tst_ReferenceDevManage::shouldForgetEverythingOnReset()
{
    DevManageCtl_LoadSample();
    DevManageCtl_SetObjectAvailable("GetDevFactory", 0);
    DevManageCtl_FailNext("GetItem", 5, -1);
    DevManageCtl_SetIdAdmitted(nullptr, 0);
    DevManageCtl_SetStaleEntries(3);

    DevManageCtl_Reset();

    QCOMPARE(DevManageCtl_ItemCount(), 0);
    QVERIFY(Factory() != nullptr);
    QVERIFY(Factory()->IsIdAdmitted("x"));
    DevManageCtl_AddChannel("c", "C", "h", 1, 1, 1, "");
    std::weak_ptr<STRCT_VideoItem> wpItem;
    QCOMPARE(Tree()->GetItem(wpItem, "c").m_iCode, 0);
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecChildren;
    Tree()->ListChildren(qvecChildren, "h");
    QCOMPARE(qvecChildren.size(), 1);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Custom()->GetAllNodes(qmapNodes, 0);
    QVERIFY(qmapNodes.isEmpty());
    QCOMPARE(DevManageCtl_CallCount("GetDevFactory"), 2); // counted afresh since the reset
}

// ---- custom tree ----------------------------------------------------------------------------

void tst_ReferenceDevManage::shouldGiveNodesOfEachRoot_data()
{
    QTest::addColumn<QString>("qstrRootId");
    QTest::addColumn<QStringList>("qlstTreeIds");

    QTest::newRow("custom") << "custom_root_id"
                            << QStringList({"c_host1_ch1", "c_host2_ch1", "custom_root_id", "grp_entrances"});
    QTest::newRow("favourites") << "favorite_root_id"
                                << QStringList({"f_host1_ch2", "fav_main", "favorite_root_id"});
    QTest::newRow("passenger flow") << "passengerflow_root_id"
                                    << QStringList({"p_host1_ch3", "passengerflow_root_id"});
    QTest::newRow("a group") << "fav_main" << QStringList({"f_host1_ch2", "fav_main"});
    QTest::newRow("unknown") << "nowhere" << QStringList();
}

void tst_ReferenceDevManage::shouldGiveNodesOfEachRoot()
{
    QFETCH(QString, qstrRootId);
    QFETCH(QStringList, qlstTreeIds);
    DevManageCtl_LoadSample();
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    QCOMPARE(Custom()->GetNodesOfRoot(qstrRootId, qmapNodes, 0).m_iCode, 0);

    QCOMPARE(qmapNodes.keys(), qlstTreeIds);
}

void tst_ReferenceDevManage::shouldReplaceAndRemoveCustomNodes()
{
    DevManageCtl_AddCustomNode("custom_root_id", "custom_root_id", "", "Custom", 2, 0, 0, -1);
    DevManageCtl_AddCustomNode("g", "g-dev", "custom_root_id", "Group", 2, 1, 0, -1);
    DevManageCtl_AddCustomNode("c", "ch1", "g", "Old", 4, 1, 1, 3);
    DevManageCtl_AddCustomNode("c", "ch1", "g", "New", 4, 2, 0, 3);
    QCOMPARE(DevManageCtl_AddCustomNode("", "x", "", "", 2, 0, 0, -1), -1);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    Custom()->GetAllNodes(qmapNodes, 0);

    QCOMPARE(qmapNodes.keys(), QStringList({"c", "custom_root_id", "g"}));
    const CLS_CustomTreeNode clsNode = qmapNodes.value("c");
    QCOMPARE(QStringList({clsNode.m_qstrName, clsNode.m_qstrDevId, clsNode.m_qstrTreeParentId,
                          clsNode.m_qstrDevParentId}),
             QStringList({"New", "ch1", "g", "g-dev"}));
    QCOMPARE(QList<int>({clsNode.m_iType, clsNode.m_iSortNo, clsNode.m_iStatus, clsNode.m_iChannelNo}),
             QList<int>({4, 2, 0, 3}));
    QCOMPARE(DevManageCtl_RemoveCustomNode("g"), 0);
    QCOMPARE(DevManageCtl_RemoveCustomNode("g"), -1);
    qmapNodes.clear();
    Custom()->GetAllNodes(qmapNodes, 0);
    QCOMPARE(qmapNodes.keys(), QStringList({"c", "custom_root_id"}));
    DevManageCtl_ClearCustomTree();
    qmapNodes.clear();
    Custom()->GetAllNodes(qmapNodes, 0);
    QVERIFY(qmapNodes.isEmpty());
}

void tst_ReferenceDevManage::shouldLoadSampleInstallation()
{
    QCOMPARE(DevManageCtl_LoadSample(), 14);

    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    Tree()->GetAllItems(qmapItems);
    QStringList qlstItems;
    for (auto it = qmapItems.cbegin(); it != qmapItems.cend(); ++it) {
        qlstItems << it.key() + "=" + ItemText(it.value());
    }
    QCOMPARE(qlstItems,
             QStringList({"resource_root_id=resource_root_id:2::0", "t_dec1=dec1:12:resource_root_id:1",
                          "t_dec1_in1=dec1_in1:17:dec1:1", "t_dec1_out1=dec1_out1:13:dec1:1",
                          "t_dec1_out2=dec1_out2:13:dec1:1", "t_host1=host1:3:resource_root_id:1",
                          "t_host1_ai1=host1_ai1:5:host1:1", "t_host1_ao1=host1_ao1:6:host1:1",
                          "t_host1_ch1=host1_ch1:4:host1:1", "t_host1_ch2=host1_ch2:4:host1:1",
                          "t_host1_ch3=host1_ch3:4:host1:0", "t_host2=host2:3:resource_root_id:0",
                          "t_host2_ch1=host2_ch1:4:host2:0", "t_host2_ch2=host2_ch2:4:host2:0"}));
    QMap<QString, QString> qmapValues;
    QString qstrValue;
    QCOMPARE(Factory()->QueryDeviceParam("host1_ch1", 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue), 1);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Custom()->GetAllNodes(qmapNodes, 0);
    QCOMPARE(qmapNodes.size(), 9);
    QCOMPARE(qmapNodes.value("f_host1_ch2").m_qstrDevParentId, QStringLiteral("fav_main"));
}

// ---- threads --------------------------------------------------------------------------------

void tst_ReferenceDevManage::shouldServeReaderThreadWhileInstallationChanges()
{
    DevManageCtl_LoadSample();
    CLS_IResourceTree* pTree = Tree(); // bound here, before the reader starts
    std::atomic<bool> blStop{false};
    std::atomic<int> iReads{0};
    std::atomic<int> iBad{0};

    // Reads the way the status thread does: list, lock one item at a time, read, let go.
    std::thread thrReader([&]() {
        while (!blStop.load()) {
            QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
            pTree->ListItemsOfType(qvecItems, 4, QVector<QString>());
            for (const auto& wpItem : qvecItems) {
                std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
                if (!spItem) {
                    continue;
                }
                if (spItem->GetType() != 4 || spItem->m_strId.empty() || spItem->m_iStatus < 0) {
                    ++iBad;
                }
                ++iReads;
            }
            std::weak_ptr<STRCT_VideoItem> wpItem;
            pTree->GetItemOfChannel(wpItem, "host1_ch1", -1, 0);
        }
    });
    for (int i = 0; i < 300; ++i) {
        DevManageCtl_SetStatus("host1_ch1", i % 2);
        DevManageCtl_SetName("host1_ch2", QByteArray::number(i).constData());
        DevManageCtl_AddChannel("extra", "Extra", "host2", 9, i % 3, 9, "");
        DevManageCtl_RemoveItem("extra");
    }
    QTRY_VERIFY_WITH_TIMEOUT(iReads.load() > 0, 5000);
    blStop.store(true);
    thrReader.join();

    QCOMPARE(iBad.load(), 0);
    int iStatus = -1;
    DevManageCtl_GetStatus("host1_ch1", &iStatus);
    QCOMPARE(iStatus, 1);
}

QTEST_GUILESS_MAIN(tst_ReferenceDevManage)
#include "tst_ReferenceDevManage.moc"
