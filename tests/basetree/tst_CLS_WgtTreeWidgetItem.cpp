// The row class: which check-state changes it reports, and in which order.

#include "CLS_WgtTreeWidgetItem.h"

#include <QSignalSpy>
#include <QTreeWidget>
#include <QtTest>

Q_DECLARE_METATYPE(QTreeWidgetItem*)

namespace {

constexpr int CONST_iFlags =
    Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsAutoTristate | Qt::ItemIsUserCheckable;

CLS_WgtTreeWidgetItem* MakeRow(const QString& _qstrName, QStringList* _pLog)
{
    auto* pRow = new CLS_WgtTreeWidgetItem(QTreeWidgetItem::UserType + 1);
    pRow->setText(0, _qstrName);
    pRow->setFlags(Qt::ItemFlags(CONST_iFlags));
    QObject::connect(pRow, &CLS_WgtTreeWidgetItem::SignCheckStateChanged,
                     [_pLog](QTreeWidgetItem* _pItem, bool _blChecked) {
                         _pLog->append(_pItem->text(0) + (_blChecked ? ":1" : ":0"));
                     });
    return pRow;
}

} // namespace

class tst_CLS_WgtTreeWidgetItem : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<QTreeWidgetItem*>(); }
    void shouldPassTypeAndHaveNoQObjectParent();
    void shouldKeepFirstCheckStateSilent();
    void shouldReportRealChangeOnly();
    void shouldPassOtherRolesAndColumnsThrough();
    void shouldReportChildrenBeforeParent();
    void shouldCountPartialStateAsChecked();
    void shouldReportRowWhoseDerivedStateDiffersFromRequest();
};

void tst_CLS_WgtTreeWidgetItem::shouldPassTypeAndHaveNoQObjectParent()
{
    CLS_WgtTreeWidgetItem row(1001);
    QCOMPARE(row.type(), 1001);
    QVERIFY(row.QObject::parent() == nullptr);
    QVERIFY(row.QTreeWidgetItem::parent() == nullptr);
}

void tst_CLS_WgtTreeWidgetItem::shouldKeepFirstCheckStateSilent()
{
    QStringList qlstLog;
    QScopedPointer<CLS_WgtTreeWidgetItem> pRow(MakeRow("r", &qlstLog));
    QSignalSpy spy(pRow.data(), &CLS_WgtTreeWidgetItem::SignCheckStateChanged);
    pRow->setData(0, Qt::CheckStateRole, int(Qt::Checked));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(pRow->checkState(0), Qt::Checked);
}

void tst_CLS_WgtTreeWidgetItem::shouldReportRealChangeOnly()
{
    QStringList qlstLog;
    QScopedPointer<CLS_WgtTreeWidgetItem> pRow(MakeRow("r", &qlstLog));
    pRow->setData(0, Qt::CheckStateRole, int(Qt::Unchecked));
    QSignalSpy spy(pRow.data(), &CLS_WgtTreeWidgetItem::SignCheckStateChanged);

    pRow->setData(0, Qt::CheckStateRole, int(Qt::Unchecked));
    QCOMPARE(spy.count(), 0);

    pRow->setData(0, Qt::CheckStateRole, int(Qt::Checked));
    QCOMPARE(spy.count(), 1);
    const QList<QVariant> qlstArgs = spy.takeFirst();
    QTreeWidgetItem* pExpected = pRow.data();
    QCOMPARE(qlstArgs.at(0).value<QTreeWidgetItem*>(), pExpected);
    QCOMPARE(qlstArgs.at(1).toBool(), true);

    pRow->setCheckState(0, Qt::Unchecked);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.takeFirst().at(1).toBool(), false);
}

void tst_CLS_WgtTreeWidgetItem::shouldPassOtherRolesAndColumnsThrough()
{
    QStringList qlstLog;
    QScopedPointer<CLS_WgtTreeWidgetItem> pRow(MakeRow("r", &qlstLog));
    pRow->setData(0, Qt::CheckStateRole, int(Qt::Unchecked));
    QSignalSpy spy(pRow.data(), &CLS_WgtTreeWidgetItem::SignCheckStateChanged);
    pRow->setData(1, Qt::CheckStateRole, int(Qt::Checked));
    pRow->setData(0, Qt::DisplayRole, QString("text"));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(pRow->data(1, Qt::CheckStateRole).toInt(), int(Qt::Checked));
    QCOMPARE(pRow->text(0), QString("text"));
}

void tst_CLS_WgtTreeWidgetItem::shouldReportChildrenBeforeParent()
{
    QTreeWidget tree;
    QStringList qlstLog;
    CLS_WgtTreeWidgetItem* pParent = MakeRow("p", &qlstLog);
    tree.addTopLevelItem(pParent);
    CLS_WgtTreeWidgetItem* pChild1 = MakeRow("c1", &qlstLog);
    CLS_WgtTreeWidgetItem* pChild2 = MakeRow("c2", &qlstLog);
    CLS_WgtTreeWidgetItem* pGrandChild = MakeRow("g", &qlstLog);
    pParent->addChild(pChild1);
    pParent->addChild(pChild2);
    pChild1->addChild(pGrandChild);
    for (CLS_WgtTreeWidgetItem* pRow : {pParent, pChild1, pChild2, pGrandChild})
        pRow->setData(0, Qt::CheckStateRole, int(Qt::Unchecked));
    QVERIFY(qlstLog.isEmpty());

    pParent->setCheckState(0, Qt::Checked);
    QCOMPARE(qlstLog, QStringList({"g:1", "c1:1", "c2:1", "p:1"}));
}

void tst_CLS_WgtTreeWidgetItem::shouldCountPartialStateAsChecked()
{
    QTreeWidget tree;
    QStringList qlstLog;
    CLS_WgtTreeWidgetItem* pParent = MakeRow("p", &qlstLog);
    tree.addTopLevelItem(pParent);
    CLS_WgtTreeWidgetItem* pChild1 = MakeRow("c1", &qlstLog);
    CLS_WgtTreeWidgetItem* pChild2 = MakeRow("c2", &qlstLog);
    pParent->addChild(pChild1);
    pParent->addChild(pChild2);
    for (CLS_WgtTreeWidgetItem* pRow : {pParent, pChild1, pChild2})
        pRow->setData(0, Qt::CheckStateRole, int(Qt::Unchecked));

    // Partial passes nothing down; the derived state stays what the children say.
    pParent->setCheckState(0, Qt::PartiallyChecked);
    QCOMPARE(pChild1->checkState(0), Qt::Unchecked);
    QCOMPARE(pChild2->checkState(0), Qt::Unchecked);
    QCOMPARE(qlstLog, QStringList({"p:0"}));

    // A childless row holding the partial state reports it as checked.
    qlstLog.clear();
    pChild1->setCheckState(0, Qt::PartiallyChecked);
    QCOMPARE(qlstLog, QStringList({"c1:1"}));
}

void tst_CLS_WgtTreeWidgetItem::shouldReportRowWhoseDerivedStateDiffersFromRequest()
{
    QTreeWidget tree;
    QStringList qlstLog;
    CLS_WgtTreeWidgetItem* pParent = MakeRow("p", &qlstLog);
    tree.addTopLevelItem(pParent);
    CLS_WgtTreeWidgetItem* pChild = MakeRow("c", &qlstLog);
    pParent->addChild(pChild);
    pParent->setData(0, Qt::CheckStateRole, int(Qt::Unchecked));
    pChild->setData(0, Qt::CheckStateRole, int(Qt::Checked));

    // The parent already derives "checked" from its child: asking for checked changes nothing.
    pParent->setCheckState(0, Qt::Checked);
    QVERIFY2(qlstLog.isEmpty(), qPrintable(qlstLog.join(" ")));
}

QTEST_MAIN(tst_CLS_WgtTreeWidgetItem)
#include "tst_CLS_WgtTreeWidgetItem.moc"
