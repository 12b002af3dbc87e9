// The abstract interfaces of the sibling libraries' objects: a test implementation of each compiles,
// is usable through its base pointer, and is destroyed through it; the result record's defaults and
// the parameter code of the image channel.

#include "CLS_IApp.h"
#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "STRCT_DevResult.h"

#include <QtTest>

#include <memory>
#include <type_traits>

// Counts destructor runs of the test implementations.
struct STRCT_DestroyCounter
{
    static int s_iDestroyed;
};
int STRCT_DestroyCounter::s_iDestroyed = 0;

// A resource tree of one root group and one channel below it.
class CLS_TestResourceTree : public CLS_IResourceTree, private STRCT_DestroyCounter
{
public:
    CLS_TestResourceTree()
    {
        m_spRoot = std::make_shared<STRCT_VideoGroup>();
        m_spRoot->m_strId = "resource_root_id";
        m_spRoot->m_strTreeId = "resource_root_id";
        m_spChannel = std::make_shared<STRCT_VideoItem>();
        m_spChannel->m_strId = "ch1";
        m_spChannel->m_strTreeId = "t-ch1";
        m_spChannel->m_strParentId = "resource_root_id";
    }
    ~CLS_TestResourceTree() override { ++s_iDestroyed; }

    STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems) override
    {
        _qmapItems.insert("resource_root_id", m_spRoot);
        _qmapItems.insert("t-ch1", m_spChannel);
        return STRCT_DevResult();
    }
    STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId) override
    {
        return Find(_wpItem, _qstrId);
    }
    STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId,
                                     int _iChannelNo, int _iFlag) override
    {
        m_qlstCalls << QString("channel %1 %2").arg(_iChannelNo).arg(_iFlag);
        return Find(_wpItem, _qstrId);
    }
    STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                    const QVector<QString>& _qvecFilterIds) override
    {
        m_qlstCalls << QString("type %1 filters %2").arg(_iType).arg(_qvecFilterIds.size());
        for (const auto& spItem : {m_spRoot, m_spChannel}) {
            if (spItem->GetType() == _iType)
                _qvecItems << spItem;
        }
        return STRCT_DevResult();
    }
    STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds) override
    {
        for (const auto& spItem : {m_spRoot, m_spChannel}) {
            if (spItem->GetType() == _iType)
                _qvecIds << QString::fromStdString(spItem->m_strId);
        }
        return STRCT_DevResult();
    }
    STRCT_DevResult ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                 const QString& _qstrParentId) override
    {
        if (_qstrParentId == "resource_root_id")
            _qvecItems << m_spChannel;
        return STRCT_DevResult();
    }

    QStringList m_qlstCalls;

private:
    STRCT_DevResult Find(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId)
    {
        for (const auto& spItem : {m_spRoot, m_spChannel}) {
            if (QString::fromStdString(spItem->m_strId) == _qstrId) {
                _wpItem = spItem;
                return STRCT_DevResult();
            }
        }
        STRCT_DevResult stResult;
        stResult.m_iCode = -1;
        stResult.m_qstrMessage = "unknown id";
        stResult.m_qmapExtend.insert("id", _qstrId);
        return stResult;
    }

    std::shared_ptr<STRCT_VideoItem> m_spRoot;
    std::shared_ptr<STRCT_VideoItem> m_spChannel;
};

class CLS_TestDevFactory : public CLS_IDevFactory, private STRCT_DestroyCounter
{
public:
    ~CLS_TestDevFactory() override { ++s_iDestroyed; }

    bool IsIdAdmitted(const QString& _qstrId) override { return _qstrId.startsWith("nvr"); }
    int QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                         QMap<QString, QString>& _qmapValues, QString& _qstrValue) override
    {
        if (_iParamType != PARAM_IMAGE_CHANNEL)
            return -1;
        _qmapValues.insert("device", _qstrDevId);
        _qstrValue = QString::number(_iChannelNo + 2);
        return 0;
    }
};

class CLS_TestApp : public CLS_IApp, private STRCT_DestroyCounter
{
public:
    ~CLS_TestApp() override { ++s_iDestroyed; }
    int GetAppState() override { return m_iState; }

    int m_iState = 0;
};

class CLS_TestDataManager : public CLS_IDataManager, private STRCT_DestroyCounter
{
public:
    ~CLS_TestDataManager() override { ++s_iDestroyed; }
};

class CLS_TestAppData : public CLS_IAppData, private STRCT_DestroyCounter
{
public:
    ~CLS_TestAppData() override { ++s_iDestroyed; }
    CLS_IDataManager* GetDataManager() override { return m_pDataManager; }

    CLS_IDataManager* m_pDataManager = nullptr;
};

class CLS_TestSiblingInterfaces : public QObject
{
    Q_OBJECT

private slots:
    void init() { STRCT_DestroyCounter::s_iDestroyed = 0; }

    void shouldStartResultAsSuccessWithNothingElse();
    void shouldMakeEveryInterfaceAbstractWithVirtualDestructor();

    void shouldListAllItemsThroughResourceTreeBase();
    void shouldFindItemAndReportUnknownIdThroughResourceTreeBase();
    void shouldPassChannelLookupArgumentsThroughResourceTreeBase();
    void shouldListByTypeAndParentThroughResourceTreeBase();

    void shouldNameImageChannelParameter();
    void shouldQueryImageChannelThroughDevFactoryBase();

    void shouldReadAppStateThroughAppBase();
    void shouldGiveDataManagerThroughAppDataBase();

    void shouldRunDerivedDestructorsThroughBasePointers();
};

void CLS_TestSiblingInterfaces::shouldStartResultAsSuccessWithNothingElse()
{
    STRCT_DevResult stResult;
    QCOMPARE(stResult.m_iCode, 0);
    QVERIFY(stResult.m_qstrMessage.isEmpty());
    QVERIFY(stResult.m_qmapExtend.isEmpty());
    QVERIFY((std::is_same<decltype(stResult.m_qmapExtend), QMap<QString, QString>>::value));
}

void CLS_TestSiblingInterfaces::shouldMakeEveryInterfaceAbstractWithVirtualDestructor()
{
    QVERIFY(std::is_abstract<CLS_IResourceTree>::value);
    QVERIFY(std::is_abstract<CLS_IDevFactory>::value);
    QVERIFY(std::is_abstract<CLS_IApp>::value);
    QVERIFY(std::is_abstract<CLS_IAppData>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IResourceTree>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IDevFactory>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IApp>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IAppData>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IDataManager>::value);
}

void CLS_TestSiblingInterfaces::shouldListAllItemsThroughResourceTreeBase()
{
    CLS_TestResourceTree clsTree;
    CLS_IResourceTree* pTree = &clsTree;
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;

    const STRCT_DevResult stResult = pTree->GetAllItems(qmapItems);

    QCOMPARE(stResult.m_iCode, 0);
    QCOMPARE(qmapItems.keys(), QStringList({"resource_root_id", "t-ch1"}));
    const std::shared_ptr<STRCT_VideoItem> spRoot = qmapItems.value("resource_root_id").lock();
    QVERIFY(spRoot);
    QCOMPARE(spRoot->GetType(), 2);
}

void CLS_TestSiblingInterfaces::shouldFindItemAndReportUnknownIdThroughResourceTreeBase()
{
    CLS_TestResourceTree clsTree;
    CLS_IResourceTree* pTree = &clsTree;

    std::weak_ptr<STRCT_VideoItem> wpItem;
    QCOMPARE(pTree->GetItem(wpItem, "ch1").m_iCode, 0);
    QVERIFY(!wpItem.expired());
    QCOMPARE(wpItem.lock()->m_strTreeId, std::string("t-ch1"));

    std::weak_ptr<STRCT_VideoItem> wpMissing;
    const STRCT_DevResult stResult = pTree->GetItem(wpMissing, "nothing");
    QVERIFY(stResult.m_iCode < 0);
    QCOMPARE(stResult.m_qmapExtend.value("id"), QString("nothing"));
    QVERIFY(wpMissing.expired());
}

void CLS_TestSiblingInterfaces::shouldPassChannelLookupArgumentsThroughResourceTreeBase()
{
    CLS_TestResourceTree clsTree;
    CLS_IResourceTree* pTree = &clsTree;
    std::weak_ptr<STRCT_VideoItem> wpItem;

    QCOMPARE(pTree->GetItemOfChannel(wpItem, "ch1", -1, 0).m_iCode, 0);

    QVERIFY(!wpItem.expired());
    QCOMPARE(clsTree.m_qlstCalls, QStringList({"channel -1 0"}));
}

void CLS_TestSiblingInterfaces::shouldListByTypeAndParentThroughResourceTreeBase()
{
    CLS_TestResourceTree clsTree;
    CLS_IResourceTree* pTree = &clsTree;

    QVector<std::weak_ptr<STRCT_VideoItem>> qvecGroups;
    pTree->ListItemsOfType(qvecGroups, 2, QVector<QString>());
    QCOMPARE(qvecGroups.size(), 1);
    QCOMPARE(clsTree.m_qlstCalls, QStringList({"type 2 filters 0"}));

    QVector<QString> qvecIds{"kept"}; // output vectors are appended to
    pTree->ListIdsOfType(1, qvecIds);
    QCOMPARE(qvecIds, QVector<QString>({"kept", "ch1"}));

    QVector<std::weak_ptr<STRCT_VideoItem>> qvecChildren;
    pTree->ListChildren(qvecChildren, "resource_root_id");
    QCOMPARE(qvecChildren.size(), 1);
    QCOMPARE(qvecChildren.first().lock()->m_strId, std::string("ch1"));
}

void CLS_TestSiblingInterfaces::shouldNameImageChannelParameter()
{
    QCOMPARE(PARAM_IMAGE_CHANNEL, 10072);
    constexpr int iAtCompileTime = PARAM_IMAGE_CHANNEL; // usable where a constant expression is needed
    QCOMPARE(iAtCompileTime, 10072);
}

void CLS_TestSiblingInterfaces::shouldQueryImageChannelThroughDevFactoryBase()
{
    CLS_TestDevFactory clsFactory;
    CLS_IDevFactory* pFactory = &clsFactory;

    QVERIFY(pFactory->IsIdAdmitted("nvr-1"));
    QVERIFY(!pFactory->IsIdAdmitted("ipc-1"));

    QMap<QString, QString> qmapValues;
    QString qstrValue;
    QCOMPARE(pFactory->QueryDeviceParam("nvr-1", 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue), 0);
    QCOMPARE(qstrValue, QString("2"));
    QCOMPARE(qmapValues.value("device"), QString("nvr-1"));
    QCOMPARE(pFactory->QueryDeviceParam("nvr-1", 0, 1, qmapValues, qstrValue), -1);
}

void CLS_TestSiblingInterfaces::shouldReadAppStateThroughAppBase()
{
    CLS_TestApp clsApp;
    CLS_IApp* pApp = &clsApp;
    QCOMPARE(pApp->GetAppState(), 0);
    clsApp.m_iState = 2;
    QCOMPARE(pApp->GetAppState(), 2);
}

void CLS_TestSiblingInterfaces::shouldGiveDataManagerThroughAppDataBase()
{
    CLS_TestAppData clsAppData;
    CLS_IAppData* pAppData = &clsAppData;
    QCOMPARE(pAppData->GetDataManager(), nullptr);

    CLS_TestDataManager clsManager;
    clsAppData.m_pDataManager = &clsManager;
    QCOMPARE(pAppData->GetDataManager(), static_cast<CLS_IDataManager*>(&clsManager));
}

void CLS_TestSiblingInterfaces::shouldRunDerivedDestructorsThroughBasePointers()
{
    delete static_cast<CLS_IResourceTree*>(new CLS_TestResourceTree);
    delete static_cast<CLS_IDevFactory*>(new CLS_TestDevFactory);
    delete static_cast<CLS_IApp*>(new CLS_TestApp);
    delete static_cast<CLS_IAppData*>(new CLS_TestAppData);
    std::unique_ptr<CLS_IDataManager> upManager(new CLS_TestDataManager);
    upManager.reset();
    QCOMPARE(STRCT_DestroyCounter::s_iDestroyed, 5);
}

QTEST_GUILESS_MAIN(CLS_TestSiblingInterfaces)
#include "tst_siblinginterfaces.moc"
