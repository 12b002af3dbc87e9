// The value records of the tree widgets: defaults, copies, enumerations and meta-type names.

#include "TreeStructDefine.h"
#include "WgtQtCompat.h"

#include <QSequentialIterable>
#include <QtTest>

#include <type_traits>

namespace {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
const char* const CONST_VectorOfTreeItemName = "QList<CLS_TreeItem>";
#else
const char* const CONST_VectorOfTreeItemName = "QVector<CLS_TreeItem>";
#endif
} // namespace

class tst_TreeStructDefine : public QObject
{
    Q_OBJECT

private slots:
    void shouldBuildItemBaseFromFiveValuesInOrder();
    void shouldCopyAllFiveFieldsOfItemBase();
    void shouldHaveNoDefaultConstructorOrVirtualsInItemBase();
    void shouldStartTreeItemWithDefaults();
    void shouldSortDefaultTreeItemAfterLowerNumbers();
    void shouldAssignTreeItemMemberWise();
    void shouldStartItemButtonUnchecked();
    void shouldStartCustomTreeNodeWithDefaults();
    void shouldKeepExtendMapInCopyOfCustomTreeNode();
    void shouldCopyNestedMenuEntries();
    void shouldKeepEnumerationValues();
    void shouldRegisterRecordsUnderTheirNames();
    void shouldRegisterMenuEntryAsStructMenuItem();
    void shouldIterateMenuListAsSequence();
    void shouldCarryRecordsThroughVariant();
};

void tst_TreeStructDefine::shouldBuildItemBaseFromFiveValuesInOrder()
{
    const Common::CLS_ItemBase clsBase("id", "text", "tip", "icon.png", QVariant(42));
    QCOMPARE(clsBase.m_qstrId, QString("id"));
    QCOMPARE(clsBase.m_qstrText, QString("text"));
    QCOMPARE(clsBase.m_qstrTooltip, QString("tip"));
    QCOMPARE(clsBase.m_qstrIcon, QString("icon.png"));
    QCOMPARE(clsBase.m_varData.toInt(), 42);
}

void tst_TreeStructDefine::shouldCopyAllFiveFieldsOfItemBase()
{
    const Common::CLS_ItemBase clsBase("id", "text", "tip", "icon.png", QVariant(QString("dev")));
    const Common::CLS_ItemBase clsCopy(clsBase);
    QCOMPARE(clsCopy.m_qstrId, clsBase.m_qstrId);
    QCOMPARE(clsCopy.m_qstrText, clsBase.m_qstrText);
    QCOMPARE(clsCopy.m_qstrTooltip, clsBase.m_qstrTooltip);
    QCOMPARE(clsCopy.m_qstrIcon, clsBase.m_qstrIcon);
    QCOMPARE(clsCopy.m_varData, clsBase.m_varData);
}

void tst_TreeStructDefine::shouldHaveNoDefaultConstructorOrVirtualsInItemBase()
{
    QVERIFY(!std::is_default_constructible<Common::CLS_ItemBase>::value);
    QVERIFY(!std::is_polymorphic<Common::CLS_ItemBase>::value);
    QVERIFY(!std::is_polymorphic<CLS_TreeItem>::value);
    QVERIFY(!std::is_polymorphic<CLS_CustomTreeNode>::value);
    QVERIFY((std::is_base_of<Common::CLS_ItemBase, CLS_TreeItem>::value));
    QVERIFY((std::is_base_of<Common::CLS_ItemBase, CLS_ItemButton>::value));
}

void tst_TreeStructDefine::shouldStartTreeItemWithDefaults()
{
    const CLS_TreeItem clsItem;
    QVERIFY(clsItem.m_qstrId.isEmpty());
    QVERIFY(clsItem.m_qstrText.isEmpty());
    QVERIFY(clsItem.m_qstrTooltip.isEmpty());
    QVERIFY(clsItem.m_qstrIcon.isEmpty());
    QVERIFY(!clsItem.m_varData.isValid());
    QVERIFY(clsItem.m_qstrParentId.isEmpty());
    QCOMPARE(clsItem.m_iReserved, 0);
    QCOMPARE(clsItem.m_iSortNo, 99);
    QVERIFY(clsItem.m_qvecButtons.isEmpty());
    QCOMPARE(clsItem.m_iItemFlags, 0);
}

void tst_TreeStructDefine::shouldSortDefaultTreeItemAfterLowerNumbers()
{
    const CLS_TreeItem clsDefault;
    CLS_TreeItem clsLower;
    clsLower.m_iSortNo = 98;
    QVERIFY(clsLower.m_iSortNo < clsDefault.m_iSortNo);
    CLS_TreeItem clsSame;
    QVERIFY(!(clsSame.m_iSortNo < clsDefault.m_iSortNo));
}

void tst_TreeStructDefine::shouldAssignTreeItemMemberWise()
{
    CLS_TreeItem clsSource;
    clsSource.m_qstrId = "a";
    clsSource.m_qstrParentId = "p";
    clsSource.m_iReserved = 3;
    clsSource.m_iSortNo = 4;
    clsSource.m_iItemFlags = 0x21;
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = "btn";
    clsButton.m_blCheckable = true;
    clsSource.m_qvecButtons.append(clsButton);
    clsSource.m_varData = QString("dev");

    CLS_TreeItem clsTarget;
    clsTarget = clsSource;
    QCOMPARE(clsTarget.m_qstrId, QString("a"));
    QCOMPARE(clsTarget.m_qstrParentId, QString("p"));
    QCOMPARE(clsTarget.m_iReserved, 3);
    QCOMPARE(clsTarget.m_iSortNo, 4);
    QCOMPARE(clsTarget.m_iItemFlags, 0x21);
    QCOMPARE(clsTarget.m_qvecButtons.size(), 1);
    QCOMPARE(clsTarget.m_qvecButtons.at(0).m_qstrId, QString("btn"));
    QVERIFY(clsTarget.m_qvecButtons.at(0).m_blCheckable);
    QCOMPARE(clsTarget.m_varData.toString(), QString("dev"));

    // Values, not references: changing the copy leaves the source alone.
    clsTarget.m_qvecButtons[0].m_qstrId = "changed";
    QCOMPARE(clsSource.m_qvecButtons.at(0).m_qstrId, QString("btn"));
}

void tst_TreeStructDefine::shouldStartItemButtonUnchecked()
{
    const CLS_ItemButton clsButton;
    QVERIFY(clsButton.m_qstrId.isEmpty());
    QVERIFY(!clsButton.m_varData.isValid());
    QVERIFY(!clsButton.m_blCheckable);
    QVERIFY(!clsButton.m_blChecked);
}

void tst_TreeStructDefine::shouldStartCustomTreeNodeWithDefaults()
{
    const CLS_CustomTreeNode clsNode;
    QCOMPARE(clsNode.m_iDevBindType, -1);
    QCOMPARE(clsNode.m_iChannelNo, -1);
    QCOMPARE(clsNode.m_blValid, true);
    QVERIFY(clsNode.m_qstrReserved.isEmpty());
    QCOMPARE(clsNode.m_llReserved, qint64(0));
    QVERIFY(clsNode.m_qstrTreeId.isEmpty());
    QVERIFY(clsNode.m_qstrDevId.isEmpty());
    QVERIFY(clsNode.m_qstrTreeParentId.isEmpty());
    QVERIFY(clsNode.m_qstrDevParentId.isEmpty());
    QVERIFY(clsNode.m_qstrName.isEmpty());
    QVERIFY(clsNode.m_qvecChildren.isEmpty());
    QCOMPARE(clsNode.m_iType, 0);
    QCOMPARE(clsNode.m_iStatus, 0);
    QCOMPARE(clsNode.m_iSortNo, 0);
    QCOMPARE(clsNode.m_iReserved, 0);
    QVERIFY(clsNode.m_qstrExtend.isEmpty());
    QVERIFY(clsNode.m_qmapExtend.isEmpty());
}

void tst_TreeStructDefine::shouldKeepExtendMapInCopyOfCustomTreeNode()
{
    CLS_CustomTreeNode clsNode;
    clsNode.m_qstrTreeId = "t1";
    clsNode.m_qmapExtend.insert("number", 7);
    clsNode.m_qmapExtend.insert("text", QString("seven"));
    clsNode.m_qmapExtend.insert("list", QStringList({"a", "b"}));
    clsNode.m_qmapExtend.insert("empty", QVariant());

    const CLS_CustomTreeNode clsCopy(clsNode);
    CLS_CustomTreeNode clsAssigned;
    clsAssigned = clsNode;
    for (const CLS_CustomTreeNode* pNode :
         std::initializer_list<const CLS_CustomTreeNode*>{&clsCopy, &clsAssigned}) {
        QCOMPARE(pNode->m_qmapExtend.keys(), QStringList({"empty", "list", "number", "text"}));
        QCOMPARE(pNode->m_qmapExtend.value("number").toInt(), 7);
        QCOMPARE(pNode->m_qmapExtend.value("text").toString(), QString("seven"));
        QCOMPARE(pNode->m_qmapExtend.value("list").toStringList(), QStringList({"a", "b"}));
        QVERIFY(!pNode->m_qmapExtend.value("empty").isValid());
        QCOMPARE(pNode->m_qstrTreeId, QString("t1"));
    }
    // The copies share data implicitly but detach on write.
    clsNode.m_qmapExtend.insert("number", 8);
    QCOMPARE(clsCopy.m_qmapExtend.value("number").toInt(), 7);
}

void tst_TreeStructDefine::shouldCopyNestedMenuEntries()
{
    _MenuItem clsChild;
    clsChild.m_qstrItemId = "child";
    clsChild.m_blChecked = true;
    _MenuItem clsTop;
    clsTop.m_qstrItemId = "top";
    clsTop.m_qstrItemText = "Top";
    clsTop.m_qstrItemIcon = "icon";
    clsTop.m_qlstChildren << clsChild << clsChild;
    clsTop.m_qlstChildren[1].m_qlstChildren << clsChild;

    const _MenuItem clsCopy = clsTop;
    QCOMPARE(clsCopy.m_qstrItemId, QString("top"));
    QCOMPARE(clsCopy.m_qstrItemText, QString("Top"));
    QCOMPARE(clsCopy.m_qstrItemIcon, QString("icon"));
    QCOMPARE(clsCopy.m_qlstChildren.size(), 2);
    QCOMPARE(clsCopy.m_qlstChildren.at(1).m_qlstChildren.size(), 1);
    QVERIFY(clsCopy.m_qlstChildren.at(1).m_qlstChildren.at(0).m_blChecked);
}

void tst_TreeStructDefine::shouldKeepEnumerationValues()
{
    QCOMPARE(int(DEV_TREE_GENERIC), 0);
    QCOMPARE(int(DEV_TREE_RESOURCE), 1);
    QCOMPARE(int(DEV_TREE_CUSTOM), 2);
    QCOMPARE(int(DEV_TREE_FAVORITE), 3);
    QCOMPARE(int(DEV_TREE_PASSENGER_FLOW), 4);
    QCOMPARE(int(ITEM_BTN_SHOW_ALWAYS), 0);
    QCOMPARE(int(ITEM_BTN_SHOW_HOVER), 1);
    QCOMPARE(int(TREE_COLLAPSE), 0);
    QCOMPARE(int(TREE_EXPAND), 1);
    QCOMPARE(int(TREE_EXPAND_ALL), 2);
}

void tst_TreeStructDefine::shouldRegisterRecordsUnderTheirNames()
{
    QCOMPARE(QtCompat::MetaTypeName(qMetaTypeId<CLS_TreeItem>()), "CLS_TreeItem");
    QCOMPARE(QtCompat::MetaTypeName(qMetaTypeId<CLS_ItemButton>()), "CLS_ItemButton");
    QCOMPARE(QtCompat::MetaTypeName(qMetaTypeId<CLS_CustomTreeNode>()), "CLS_CustomTreeNode");
    QCOMPARE(QtCompat::MetaTypeId("CLS_TreeItem"), qMetaTypeId<CLS_TreeItem>());
    // The automatic container name is Qt's: Qt 6 has no QVector of its own (it is QList there), so
    // the vector of rows is named "QList<CLS_TreeItem>". Its Qt 5 spelling finds it on both.
    QCOMPARE(QtCompat::MetaTypeName(qMetaTypeId<QVector<CLS_TreeItem>>()), CONST_VectorOfTreeItemName);
    QCOMPARE(QtCompat::MetaTypeId("QVector<CLS_TreeItem>"), qMetaTypeId<QVector<CLS_TreeItem>>());
    QCOMPARE(QtCompat::MetaTypeName(qMetaTypeId<QMap<QString, CLS_TreeItem>>()),
             "QMap<QString,CLS_TreeItem>");
}

void tst_TreeStructDefine::shouldRegisterMenuEntryAsStructMenuItem()
{
    const int iId = qMetaTypeId<_MenuItem>();
    QCOMPARE(QtCompat::MetaTypeName(iId), "STRUCT_MenuItem");
    QCOMPARE(QtCompat::MetaTypeId("STRUCT_MenuItem"), iId);
    QCOMPARE(QtCompat::MetaTypeName(qMetaTypeId<QList<_MenuItem>>()), "QList<STRUCT_MenuItem>");
    QCOMPARE(QtCompat::MetaTypeId("QList<STRUCT_MenuItem>"), qMetaTypeId<QList<_MenuItem>>());
}

void tst_TreeStructDefine::shouldIterateMenuListAsSequence()
{
    _MenuItem clsFirst;
    clsFirst.m_qstrItemId = "first";
    _MenuItem clsSecond;
    clsSecond.m_qstrItemId = "second";
    const QVariant varList = QVariant::fromValue(QList<_MenuItem>{clsFirst, clsSecond});
    QVERIFY(varList.canConvert<QVariantList>());
    QStringList qlstIds;
    const QSequentialIterable iterable = varList.value<QSequentialIterable>();
    for (const QVariant& varEntry : iterable)
        qlstIds << varEntry.value<_MenuItem>().m_qstrItemId;
    QCOMPARE(qlstIds, QStringList({"first", "second"}));
}

void tst_TreeStructDefine::shouldCarryRecordsThroughVariant()
{
    CLS_CustomTreeNode clsNode;
    clsNode.m_qstrTreeId = "t";
    clsNode.m_qmapExtend.insert("k", 1);
    const QVariant varNode = QVariant::fromValue(clsNode);
    QVERIFY(varNode.canConvert<CLS_CustomTreeNode>());
    QCOMPARE(varNode.value<CLS_CustomTreeNode>().m_qmapExtend.value("k").toInt(), 1);

    CLS_ItemButton clsButton;
    clsButton.m_blChecked = true;
    QVERIFY(QVariant::fromValue(clsButton).value<CLS_ItemButton>().m_blChecked);
}

QTEST_APPLESS_MAIN(tst_TreeStructDefine)
#include "tst_TreeStructDefine.moc"
