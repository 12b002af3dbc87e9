// Replays every corpus file and every crash input of the fuzz targets through the decoders the
// targets use, and checks what can be checked cheaply: no crash, the rows a base tree builds are
// exactly those its records reach, device-tree rows name nodes of the model, channel batches are
// applied only in the right payload type, sheets are read back as the loader promises,
// installation files are read whole or refused whole with one error line, and drag payloads are
// read whole or refused without a trace.

#include "CLS_TestPaths.h"
#include "FuzzDecoders.h"
#include "FuzzDragData.h"
#include "FuzzInstallation.h"
#include "FuzzViewState.h"
#include "Param.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

namespace {

const QStringList& TargetNames()
{
    static const QStringList s_qlstTargets{"fuzz_basetree_init", "fuzz_devicetree_init", "fuzz_status_batch",
                                           "fuzz_stylesheet",    "fuzz_installation",    "fuzz_view_state",
                                           "fuzz_drag_data"};
    return s_qlstTargets;
}

// Every input of one target, corpus first ("seed_..." or a hash), then the crash inputs ("crash/...").
QStringList InputFiles(const QString& _qstrTarget)
{
    QStringList qlstFiles;
    for (const QString& qstrRoot : {CLS_TestPaths::QFromProgramDir(WGT_FUZZ_CORPUS_DIR),
                                    CLS_TestPaths::QFromProgramDir(WGT_FUZZ_INPUTS_DIR)}) {
        QDir qdir(qstrRoot + "/" + _qstrTarget);
        const QStringList qlstNames = qdir.entryList(QDir::Files, QDir::Name);
        for (const QString& qstrName : qlstNames)
            qlstFiles << qdir.filePath(qstrName);
    }
    return qlstFiles;
}

void AddInputRows(const QString& _qstrTarget)
{
    QTest::addColumn<QByteArray>("qbaInput");
    const QString qstrInputs = CLS_TestPaths::QFromProgramDir(WGT_FUZZ_INPUTS_DIR);
    for (const QString& qstrPath : InputFiles(_qstrTarget)) {
        QFile qfile(qstrPath);
        QVERIFY2(qfile.open(QIODevice::ReadOnly), qPrintable(qstrPath));
        const QFileInfo qfiInput(qstrPath);
        const bool blCrash = qfiInput.absoluteFilePath().startsWith(qstrInputs);
        QTest::newRow(qPrintable((blCrash ? "crash/" : "") + qfiInput.fileName())) << qfile.readAll();
    }
}

const uint8_t* Bytes(const QByteArray& _qba)
{
    return reinterpret_cast<const uint8_t*>(_qba.constData());
}

} // namespace

class tst_FuzzReplay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void shouldHaveSeedsForEveryTarget();
    void shouldBuildExactlyTheReachableRows_data();
    void shouldBuildExactlyTheReachableRows();
    void shouldKeepDeviceRowsInStepWithTheModel_data();
    void shouldKeepDeviceRowsInStepWithTheModel();
    void shouldApplyOnlyStatusMapsOfTheRightType_data();
    void shouldApplyOnlyStatusMapsOfTheRightType();
    void shouldRestoreViewStatesWholeOrNotAtAll_data();
    void shouldRestoreViewStatesWholeOrNotAtAll();
    void shouldReadSheetsBackAsWritten_data();
    void shouldReadSheetsBackAsWritten();
    void shouldReadOrRefuseEveryInstallationWhole_data();
    void shouldReadOrRefuseEveryInstallationWhole();
    void shouldReadDragPayloadsWholeOrLeaveNoTrace_data();
    void shouldReadDragPayloadsWholeOrLeaveNoTrace();
};

void tst_FuzzReplay::initTestCase()
{
    // Without the empty-skin settings library the loader would cache the first sheet.
    QVERIFY(nullptr != Param::GetModuleFun("GetParam"));
    QCOMPARE(QString::fromStdString(Param::GetParam("SystemConfig", "skin", "dark")), QString());
}

void tst_FuzzReplay::cleanupTestCase()
{
    WgtFuzz::DestroyKeptTrees(); // before the statics go: the status threads use the binder's caches
    QDir(FunctionUtil::GetBinPath() + "/resource").removeRecursively();
}

void tst_FuzzReplay::shouldHaveSeedsForEveryTarget()
{
    for (const QString& qstrTarget : TargetNames())
        QVERIFY2(InputFiles(qstrTarget).size() >= 3, qPrintable(qstrTarget));
}

void tst_FuzzReplay::shouldBuildExactlyTheReachableRows_data()
{
    AddInputRows("fuzz_basetree_init");
}

void tst_FuzzReplay::shouldBuildExactlyTheReachableRows()
{
    QFETCH(QByteArray, qbaInput);
    const WgtFuzz::STRCT_BaseTreeRun run = WgtFuzz::RunBaseTree(Bytes(qbaInput), size_t(qbaInput.size()));
    if (run.m_blSkipped)
        QSKIP("more rows than the replay builds (duplicate ids multiply the build)");
    const WgtFuzz::STRCT_BaseTreeModel& model = run.m_model;
    if (model.m_iRows == -2) {
        // Refused: empty root id, empty map or a root id that is not a key.
        QCOMPARE(run.m_iInitResult, -1);
        QCOMPARE(run.m_iRows, 0);
        return;
    }
    QCOMPARE(run.m_iInitResult, model.m_iInitResult);
    QCOMPARE(run.m_iRows, model.m_iRows);
    QCOMPARE(run.m_qsetIndexedIds, model.m_qsetIds);
}

void tst_FuzzReplay::shouldKeepDeviceRowsInStepWithTheModel_data()
{
    AddInputRows("fuzz_devicetree_init");
}

void tst_FuzzReplay::shouldKeepDeviceRowsInStepWithTheModel()
{
    QFETCH(QByteArray, qbaInput);
    const WgtFuzz::STRCT_DeviceTreeRun run = WgtFuzz::RunDeviceTree(Bytes(qbaInput), size_t(qbaInput.size()));
    QVERIFY2(run.m_qlstRowIdsNotInModel.isEmpty(), qPrintable(run.m_qlstRowIdsNotInModel.join(",")));
    QVERIFY2(run.m_qlstDevIdsToNoNode.isEmpty(), qPrintable(run.m_qlstDevIdsToNoNode.join(",")));
    QVERIFY(run.m_iInitResult == 0 || run.m_iInitResult == -1);
    if (run.m_iTreeType == DEV_TREE_GENERIC || run.m_iTreeType == DEV_TREE_CUSTOM)
        QVERIFY(run.m_qmapCallerNodes.contains("custom_root_id"));
    if (run.m_iTreeType == DEV_TREE_PASSENGER_FLOW) {
        // The passenger-flow root is put in afresh on every Init, whatever the caller had there.
        const CLS_CustomTreeNode root = run.m_qmapCallerNodes.value("passengerflow_root_id");
        QCOMPARE(root.m_qstrTreeId, QString("passengerflow_root_id"));
        QCOMPARE(root.m_qstrName, run.m_qstrRootName);
        QCOMPARE(root.m_iType, 2);
    }
}

void tst_FuzzReplay::shouldApplyOnlyStatusMapsOfTheRightType_data()
{
    AddInputRows("fuzz_status_batch");
}

void tst_FuzzReplay::shouldApplyOnlyStatusMapsOfTheRightType()
{
    QFETCH(QByteArray, qbaInput);
    const WgtFuzz::STRCT_StatusRun run = WgtFuzz::RunStatusBatch(Bytes(qbaInput), size_t(qbaInput.size()));
    QCOMPARE(run.m_iRebuildResult, 0);
    for (const WgtFuzz::STRCT_StatusBatch& batch : run.m_qvecBatches) {
        QCOMPARE(batch.m_iResult, batch.m_blExactType ? 0 : -1);
        QVERIFY2(batch.m_qlstMismatches.isEmpty(), qPrintable(batch.m_qlstMismatches.join("; ")));
    }
}

void tst_FuzzReplay::shouldRestoreViewStatesWholeOrNotAtAll_data()
{
    AddInputRows("fuzz_view_state");
}

void tst_FuzzReplay::shouldRestoreViewStatesWholeOrNotAtAll()
{
    QFETCH(QByteArray, qbaInput);
    const WgtFuzz::STRCT_ViewStateRun run = WgtFuzz::RunViewState(Bytes(qbaInput), size_t(qbaInput.size()));
    QVERIFY2(run.m_qlstProblems.isEmpty(), qPrintable(run.m_qlstProblems.join("; ")));
}

void tst_FuzzReplay::shouldReadSheetsBackAsWritten_data()
{
    AddInputRows("fuzz_stylesheet");
}

void tst_FuzzReplay::shouldReadSheetsBackAsWritten()
{
    QFETCH(QByteArray, qbaInput);
    const WgtFuzz::STRCT_SheetRun run = WgtFuzz::RunSheet(Bytes(qbaInput), size_t(qbaInput.size()));
    QCOMPARE(run.m_qstrResult, run.m_qstrExpected);
    QCOMPARE(run.m_qstrWidgetSheet, run.m_qstrResult);
}

void tst_FuzzReplay::shouldReadOrRefuseEveryInstallationWhole_data()
{
    AddInputRows("fuzz_installation");
}

void tst_FuzzReplay::shouldReadOrRefuseEveryInstallationWhole()
{
    QFETCH(QByteArray, qbaInput);
    const QString qstrProblem = FuzzInstallation::Check(qbaInput);
    QVERIFY2(qstrProblem.isEmpty(), qPrintable(qstrProblem));

    // The seeds say by their names what they are: "seed_valid_..." files are read, "seed_refused_..."
    // files refused.
    const QString qstrRow = QString::fromLatin1(QTest::currentDataTag());
    if (qstrRow.startsWith("seed_valid_") || qstrRow.startsWith("seed_refused_")) {
        STRCT_RefInstallation strctInstallation;
        QString qstrError;
        const int iResult = RefInstallation::Parse(qbaInput, strctInstallation, qstrError);
        QCOMPARE(iResult, qstrRow.startsWith("seed_valid_") ? 0 : -1);
    }
}

void tst_FuzzReplay::shouldReadDragPayloadsWholeOrLeaveNoTrace_data()
{
    AddInputRows("fuzz_drag_data");
}

void tst_FuzzReplay::shouldReadDragPayloadsWholeOrLeaveNoTrace()
{
    QFETCH(QByteArray, qbaInput);
    const WgtFuzz::STRCT_DragDataRun run = WgtFuzz::RunDragData(Bytes(qbaInput), size_t(qbaInput.size()));
    QVERIFY2(run.m_qlstProblems.isEmpty(), qPrintable(run.m_qlstProblems.join("; ")));

    // The hand-made seeds (make_seeds.py): these four are payloads, every other one is refused.
    static const QStringList s_qlstRead{"seed_whole", "seed_empty_array", "seed_non_ascii",
                                        "seed_extra_keys"};
    const QString qstrRow = QString::fromLatin1(QTest::currentDataTag());
    if (qstrRow.startsWith("seed_"))
        QCOMPARE(run.m_iResult, s_qlstRead.contains(qstrRow) ? 0 : -1);
}

QTEST_MAIN(tst_FuzzReplay)
#include "tst_FuzzReplay.moc"
