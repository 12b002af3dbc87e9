// Resource objects: every record's type code and defaults, the order of the added fields, and
// destruction through a base pointer.

#include "DevStructDefine.h"

#include <QtTest>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>

namespace QTest {
template <>
inline char* toString(const std::string& _str)
{
    return qstrdup(_str.c_str());
}
} // namespace QTest

// ---- allocation balance ----------------------------------------------------------------------
// Global operator new/delete count live blocks while a CLS_AllocationWatch is active on this thread,
// so a test can see that a destructor released every string and vector of a record.

namespace {
thread_local bool s_blCounting = false;
std::atomic<long> s_lLiveBlocks{0};
} // namespace

void* operator new(std::size_t _uSize)
{
    void* pBlock = std::malloc(_uSize == 0 ? 1 : _uSize);
    if (pBlock == nullptr)
        throw std::bad_alloc();
    if (s_blCounting)
        ++s_lLiveBlocks;
    return pBlock;
}

void* operator new[](std::size_t _uSize)
{
    return ::operator new(_uSize);
}

void operator delete(void* _pBlock) noexcept
{
    if (_pBlock != nullptr && s_blCounting)
        --s_lLiveBlocks;
    std::free(_pBlock);
}

void operator delete[](void* _pBlock) noexcept
{
    ::operator delete(_pBlock);
}

void operator delete(void* _pBlock, std::size_t) noexcept
{
    ::operator delete(_pBlock);
}

void operator delete[](void* _pBlock, std::size_t) noexcept
{
    ::operator delete(_pBlock);
}

class CLS_AllocationWatch
{
public:
    CLS_AllocationWatch()
    {
        s_lLiveBlocks = 0;
        s_blCounting = true;
    }
    ~CLS_AllocationWatch() { s_blCounting = false; }
    long LiveBlocks() const { return s_lLiveBlocks; }
};

// ---- test records ------------------------------------------------------------------------------

// A video channel as the device-management library defines it: its own fields open with the
// channel number.
struct STRCT_TestChannel : public STRCT_VideoItem
{
    int GetType() override { return 4; }

    int m_iChannelNo = 0;
    std::string m_strChannelText;
};

// Counts the destructor runs of a record kind, to see a delete through the base reach it.
template <typename T>
struct STRCT_CountingRecord : public T
{
    static int s_iDestroyed;
    ~STRCT_CountingRecord() override { ++s_iDestroyed; }
};
template <typename T>
int STRCT_CountingRecord<T>::s_iDestroyed = 0;

using PFun_MakeItem = STRCT_VideoItem* (*)();
Q_DECLARE_METATYPE(PFun_MakeItem)

template <typename T>
STRCT_VideoItem* MakeItem()
{
    return new T;
}

// Long enough to live on the heap, so that a forgotten string shows in the allocation balance.
const std::string CONST_strLong(64, 'x');

void FillBaseFields(STRCT_VideoItem& _stItem)
{
    _stItem.m_strId = CONST_strLong + "id";
    _stItem.m_strName = CONST_strLong + "name";
    _stItem.m_strParentId = CONST_strLong + "parent";
    _stItem.m_strText1 = CONST_strLong + "text1";
    _stItem.m_strText2 = CONST_strLong + "text2";
    _stItem.m_strTreeId = CONST_strLong + "tree";
    _stItem.m_vecValues = {1, 2, 3};
    _stItem.m_strExtend = CONST_strLong + "extend";
    _stItem.m_strTail = CONST_strLong + "tail";
}

QString DescribeBaseDefaults(const STRCT_VideoItem& _stItem)
{
    QStringList qlstWrong;
    if (!_stItem.m_strId.empty())
        qlstWrong << "m_strId";
    if (!_stItem.m_strName.empty())
        qlstWrong << "m_strName";
    if (!_stItem.m_strParentId.empty())
        qlstWrong << "m_strParentId";
    if (_stItem.m_llValue != 0)
        qlstWrong << "m_llValue";
    if (!_stItem.m_strText1.empty())
        qlstWrong << "m_strText1";
    if (!_stItem.m_strText2.empty())
        qlstWrong << "m_strText2";
    if (_stItem.m_iOrderNo != 0)
        qlstWrong << "m_iOrderNo";
    if (!_stItem.m_strTreeId.empty())
        qlstWrong << "m_strTreeId";
    if (!_stItem.m_vecValues.empty())
        qlstWrong << "m_vecValues";
    if (_stItem.m_iStatus != 0)
        qlstWrong << "m_iStatus";
    if (_stItem.m_iValue != 0)
        qlstWrong << "m_iValue";
    if (!_stItem.m_strExtend.empty())
        qlstWrong << "m_strExtend";
    if (_stItem.m_iDevBindType != -1)
        qlstWrong << "m_iDevBindType";
    if (!_stItem.m_strTail.empty())
        qlstWrong << "m_strTail";
    if (_stItem.m_iCount != 1)
        qlstWrong << "m_iCount";
    if (!_stItem.m_blFlag)
        qlstWrong << "m_blFlag";
    return qlstWrong.isEmpty() ? QString() : "not at default: " + qlstWrong.join(", ");
}

// Address of a field, for checking that fields lie in their declared order.
template <typename T>
const char* At(const T& _field)
{
    return reinterpret_cast<const char*>(&_field);
}

QString DescribeOrder(const QVector<QPair<const char*, const char*>>& _qvecFields)
{
    for (int i = 1; i < _qvecFields.size(); ++i) {
        if (!std::less<const char*>()(_qvecFields[i - 1].second, _qvecFields[i].second))
            return QString("%1 does not come before %2").arg(_qvecFields[i - 1].first, _qvecFields[i].first);
    }
    return QString();
}

#define FIELD(record, name) QPair<const char*, const char*>(#name, At(record.name))

class CLS_TestResourceRecords : public QObject
{
    Q_OBJECT

private slots:
    void shouldReturnTypeCodeOfEachRecord_data();
    void shouldReturnTypeCodeOfEachRecord();
    void shouldKeepBaseDefaultsInEachRecord_data();
    void shouldKeepBaseDefaultsInEachRecord();

    void shouldStartDefaultItemWithNoBindTypeAndBaseType();
    void shouldGiveBaseDefaults();
    void shouldDeclareBaseFieldTypes();
    void shouldKeepBaseFieldsInDeclaredOrder();
    void shouldBePolymorphicWithVirtualDestructor();

    void shouldAddNothingInPlainRecords_data();
    void shouldAddNothingInPlainRecords();

    void shouldDefaultMiddleWareHostFields();
    void shouldDefaultMatrixFields();
    void shouldDefaultMatrixInFields();
    void shouldDefaultMatrixOutFields();
    void shouldDefaultGisFields();
    void shouldDefaultStitchingFields();
    void shouldDefaultDecoderOutAreaFields();
    void shouldDefaultScreenOutFields();
    void shouldDefaultRecStatusFields();
    void shouldDefaultDiskStatusFields();
    void shouldDefaultDoorServerFields();
    void shouldDefaultSwitchTempFields();
    void shouldDeclareSwitchTimeTempStringsBehindItsInt();
    void shouldDefaultSwitchChanFields();
    void shouldDefaultStaffFields();
    void shouldDefaultAlarmLinkFields();
    void shouldDefaultArmingEventFields();
    void shouldDefaultFaceLibItemFields();
    void shouldDeclareAddedFieldTypes();

    void shouldCopyDerivedRecordWithAllFields();

    void shouldRunDerivedAndBaseDestructorsThroughBasePointer_data();
    void shouldRunDerivedAndBaseDestructorsThroughBasePointer();
    void shouldReleaseGroupAndOrganizeLikeBaseThroughBasePointer();
    void shouldDestroyGroupHeldInSharedPtrOfBase();

    void shouldLeaveChangedInfoEmptyByDefault();
    void shouldEqualDefaultChangedInfoFromNullPointer();
    void shouldCopyAllThreeStringsOfChangedInfoFromPointer();

    void shouldReadChannelNumberOfTestChannelThroughBase();
};

// ---- type codes and base defaults ----------------------------------------------------------------

namespace {
void AddRecordRows()
{
    QTest::addColumn<PFun_MakeItem>("pfMake");
    QTest::addColumn<int>("iType");

    QTest::newRow("STRCT_VideoItem") << &MakeItem<STRCT_VideoItem> << 1;
    QTest::newRow("STRCT_VideoGroup") << &MakeItem<STRCT_VideoGroup> << 2;
    QTest::newRow("STRCT_MiddleWareHost") << &MakeItem<STRCT_MiddleWareHost> << 7;
    QTest::newRow("STRCT_Matrix") << &MakeItem<STRCT_Matrix> << 8;
    QTest::newRow("STRCT_MatrixIn") << &MakeItem<STRCT_MatrixIn> << 9;
    QTest::newRow("STRCT_MatrixOut") << &MakeItem<STRCT_MatrixOut> << 10;
    QTest::newRow("STRCT_GIS") << &MakeItem<STRCT_GIS> << 11;
    QTest::newRow("STRCT_DecoderOutArea") << &MakeItem<STRCT_DecoderOutArea> << 14;
    QTest::newRow("STRCT_ScreenOut") << &MakeItem<STRCT_ScreenOut> << 15;
    QTest::newRow("STRCT_TVLayOut") << &MakeItem<STRCT_TVLayOut> << 44;
    QTest::newRow("STRCT_PlanManage") << &MakeItem<STRCT_PlanManage> << 45;
    QTest::newRow("STRCT_Plan") << &MakeItem<STRCT_Plan> << 46;
    QTest::newRow("STRCT_DoorServer") << &MakeItem<STRCT_DoorServer> << 48;
    QTest::newRow("STRCT_DoorController") << &MakeItem<STRCT_DoorController> << 49;
    QTest::newRow("STRCT_Door") << &MakeItem<STRCT_Door> << 50;
    QTest::newRow("STRCT_DoorReader") << &MakeItem<STRCT_DoorReader> << 51;
    QTest::newRow("STRCT_Stitching") << &MakeItem<STRCT_Stitching> << 313;
    QTest::newRow("STRCT_SwitchTemp") << &MakeItem<STRCT_SwitchTemp> << 400;
    QTest::newRow("STRCT_SwitchTimeTemp") << &MakeItem<STRCT_SwitchTimeTemp> << 401;
    QTest::newRow("STRCT_SwitchChan") << &MakeItem<STRCT_SwitchChan> << 402;
    QTest::newRow("STRCT_RecStatus") << &MakeItem<STRCT_RecStatus> << 403;
    QTest::newRow("STRCT_DiskStatus") << &MakeItem<STRCT_DiskStatus> << 404;
    QTest::newRow("STRCT_ArmTemp") << &MakeItem<STRCT_ArmTemp> << 500;
    QTest::newRow("STRUCT_AlarmLink") << &MakeItem<STRUCT_AlarmLink> << 501;
    QTest::newRow("STRUCT_ArmingEvent") << &MakeItem<STRUCT_ArmingEvent> << 502;
    QTest::newRow("STRCT_Staff") << &MakeItem<STRCT_Staff> << 503;
    QTest::newRow("STRCT_Organize") << &MakeItem<STRCT_Organize> << 504;
    QTest::newRow("STRCT_FaceLibItem") << &MakeItem<STRCT_FaceLibItem> << 505;
    QTest::newRow("STRUCT_PersonItem") << &MakeItem<STRUCT_PersonItem> << 507;
}
} // namespace

void CLS_TestResourceRecords::shouldReturnTypeCodeOfEachRecord_data()
{
    AddRecordRows();
}

void CLS_TestResourceRecords::shouldReturnTypeCodeOfEachRecord()
{
    QFETCH(PFun_MakeItem, pfMake);
    QFETCH(int, iType);

    std::unique_ptr<STRCT_VideoItem> pItem(pfMake());
    QCOMPARE(pItem->GetType(), iType);
}

void CLS_TestResourceRecords::shouldKeepBaseDefaultsInEachRecord_data()
{
    AddRecordRows();
}

void CLS_TestResourceRecords::shouldKeepBaseDefaultsInEachRecord()
{
    QFETCH(PFun_MakeItem, pfMake);

    std::unique_ptr<STRCT_VideoItem> pItem(pfMake());
    QCOMPARE(DescribeBaseDefaults(*pItem), QString());
}

void CLS_TestResourceRecords::shouldStartDefaultItemWithNoBindTypeAndBaseType()
{
    STRCT_VideoItem stItem;
    QCOMPARE(stItem.m_iDevBindType, -1);
    QCOMPARE(stItem.GetType(), 1);
}

void CLS_TestResourceRecords::shouldGiveBaseDefaults()
{
    STRCT_VideoItem stItem;
    QCOMPARE(stItem.m_strId, std::string());
    QCOMPARE(stItem.m_strName, std::string());
    QCOMPARE(stItem.m_strParentId, std::string());
    QCOMPARE(stItem.m_llValue, 0LL);
    QCOMPARE(stItem.m_strText1, std::string());
    QCOMPARE(stItem.m_strText2, std::string());
    QCOMPARE(stItem.m_iOrderNo, 0);
    QCOMPARE(stItem.m_strTreeId, std::string());
    QVERIFY(stItem.m_vecValues.empty());
    QCOMPARE(stItem.m_iStatus, 0);
    QCOMPARE(stItem.m_iValue, 0);
    QCOMPARE(stItem.m_strExtend, std::string());
    QCOMPARE(stItem.m_iDevBindType, -1);
    QCOMPARE(stItem.m_strTail, std::string());
    QCOMPARE(stItem.m_iCount, 1);
    QCOMPARE(stItem.m_blFlag, true);
}

void CLS_TestResourceRecords::shouldDeclareBaseFieldTypes()
{
    QVERIFY((std::is_same<decltype(STRCT_VideoItem::m_strId), std::string>::value));
    QVERIFY((std::is_same<decltype(STRCT_VideoItem::m_llValue), long long>::value));
    QCOMPARE(sizeof(STRCT_VideoItem::m_llValue), size_t(8));
    QVERIFY((std::is_same<decltype(STRCT_VideoItem::m_vecValues), std::vector<int>>::value));
    QVERIFY((std::is_same<decltype(STRCT_VideoItem::m_iDevBindType), int>::value));
    QVERIFY((std::is_same<decltype(STRCT_VideoItem::m_blFlag), bool>::value));
    QVERIFY((std::is_same<decltype(std::declval<STRCT_VideoItem&>().GetType()), int>::value));
}

void CLS_TestResourceRecords::shouldKeepBaseFieldsInDeclaredOrder()
{
    STRCT_VideoItem stItem;
    QCOMPARE(DescribeOrder({FIELD(stItem, m_strId), FIELD(stItem, m_strName), FIELD(stItem, m_strParentId),
                            FIELD(stItem, m_llValue), FIELD(stItem, m_strText1), FIELD(stItem, m_strText2),
                            FIELD(stItem, m_iOrderNo), FIELD(stItem, m_strTreeId), FIELD(stItem, m_vecValues),
                            FIELD(stItem, m_iStatus), FIELD(stItem, m_iValue), FIELD(stItem, m_strExtend),
                            FIELD(stItem, m_iDevBindType), FIELD(stItem, m_strTail), FIELD(stItem, m_iCount),
                            FIELD(stItem, m_blFlag)}),
             QString());
}

void CLS_TestResourceRecords::shouldBePolymorphicWithVirtualDestructor()
{
    QVERIFY(std::is_polymorphic<STRCT_VideoItem>::value);
    QVERIFY(std::has_virtual_destructor<STRCT_VideoItem>::value);
    QVERIFY(!std::is_polymorphic<STRCT_CustomTreeChangedInfo>::value);
}

// ---- records that add nothing ----------------------------------------------------------------------

void CLS_TestResourceRecords::shouldAddNothingInPlainRecords_data()
{
    QTest::addColumn<size_t>("uSize");

    QTest::newRow("STRCT_VideoGroup") << sizeof(STRCT_VideoGroup);
    QTest::newRow("STRCT_TVLayOut") << sizeof(STRCT_TVLayOut);
    QTest::newRow("STRCT_PlanManage") << sizeof(STRCT_PlanManage);
    QTest::newRow("STRCT_Plan") << sizeof(STRCT_Plan);
    QTest::newRow("STRCT_DoorController") << sizeof(STRCT_DoorController);
    QTest::newRow("STRCT_Door") << sizeof(STRCT_Door);
    QTest::newRow("STRCT_DoorReader") << sizeof(STRCT_DoorReader);
    QTest::newRow("STRCT_ArmTemp") << sizeof(STRCT_ArmTemp);
    QTest::newRow("STRCT_Organize") << sizeof(STRCT_Organize);
    QTest::newRow("STRUCT_PersonItem") << sizeof(STRUCT_PersonItem);
}

void CLS_TestResourceRecords::shouldAddNothingInPlainRecords()
{
    QFETCH(size_t, uSize);
    QCOMPARE(uSize, sizeof(STRCT_VideoItem));
}

// ---- added fields ----------------------------------------------------------------------------------

void CLS_TestResourceRecords::shouldDefaultMiddleWareHostFields()
{
    STRCT_MiddleWareHost stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_strField3, std::string());
    QCOMPARE(stItem.m_llField1, 0LL);
    QCOMPARE(
        DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_iField1),
                       FIELD(stItem, m_strField2), FIELD(stItem, m_strField3), FIELD(stItem, m_llField1)}),
        QString());
}

void CLS_TestResourceRecords::shouldDefaultMatrixFields()
{
    STRCT_Matrix stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_iField1, 3000);
    QCOMPARE(stItem.m_iField2, 3000);
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_iField1),
                            FIELD(stItem, m_iField2)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultMatrixInFields()
{
    STRCT_MatrixIn stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_strField3, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_strField2),
                            FIELD(stItem, m_iField1), FIELD(stItem, m_strField3)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultMatrixOutFields()
{
    STRCT_MatrixOut stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_iField1),
                            FIELD(stItem, m_strField2)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultGisFields()
{
    STRCT_GIS stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_iField1)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultStitchingFields()
{
    STRCT_Stitching stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1)}), QString());
}

void CLS_TestResourceRecords::shouldDefaultDecoderOutAreaFields()
{
    STRCT_DecoderOutArea stItem;
    QCOMPARE(stItem.m_llField1, 0LL);
    QCOMPARE(stItem.m_llField2, 0LL);
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_llField1), FIELD(stItem, m_llField2),
                            FIELD(stItem, m_iField1), FIELD(stItem, m_strField1)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultScreenOutFields()
{
    STRCT_ScreenOut stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_strField2),
                            FIELD(stItem, m_iField1)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultRecStatusFields()
{
    STRCT_RecStatus stItem;
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_blField1, false);
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_iField1), FIELD(stItem, m_blField1)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultDiskStatusFields()
{
    STRCT_DiskStatus stItem;
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_iField1)}), QString());
}

void CLS_TestResourceRecords::shouldDefaultDoorServerFields()
{
    STRCT_DoorServer stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_iField1, 9000);
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_strField3, std::string());
    QCOMPARE(stItem.m_iField2, 8000);
    QCOMPARE(stItem.m_strField4, std::string());
    QCOMPARE(stItem.m_strField5, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_iField1),
                            FIELD(stItem, m_strField2), FIELD(stItem, m_strField3), FIELD(stItem, m_iField2),
                            FIELD(stItem, m_strField4), FIELD(stItem, m_strField5)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultSwitchTempFields()
{
    STRCT_SwitchTemp stItem;
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_iField1), FIELD(stItem, m_strField1),
                            FIELD(stItem, m_strField2)}),
             QString());
}

void CLS_TestResourceRecords::shouldDeclareSwitchTimeTempStringsBehindItsInt()
{
    // The int stays unset by the default constructor, so only the strings have a value to check.
    STRCT_SwitchTimeTemp stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_strField3, std::string());
    QCOMPARE(stItem.m_strField4, std::string());
    QVERIFY((std::is_same<decltype(STRCT_SwitchTimeTemp::m_iField1), int>::value));
    QCOMPARE(
        DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_iField1), FIELD(stItem, m_strField1),
                       FIELD(stItem, m_strField2), FIELD(stItem, m_strField3), FIELD(stItem, m_strField4)}),
        QString());
}

void CLS_TestResourceRecords::shouldDefaultSwitchChanFields()
{
    STRCT_SwitchChan stItem;
    QCOMPARE(stItem.m_iField1, -1);
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_strField3, std::string());
    QCOMPARE(stItem.m_strField4, std::string());
    QCOMPARE(stItem.m_iField2, 5);
    QCOMPARE(stItem.m_llField1, 30LL);
    QCOMPARE(stItem.m_llField2, 0LL);
    QCOMPARE(
        DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_iField1), FIELD(stItem, m_strField1),
                       FIELD(stItem, m_strField2), FIELD(stItem, m_strField3), FIELD(stItem, m_strField4),
                       FIELD(stItem, m_iField2), FIELD(stItem, m_llField1), FIELD(stItem, m_llField2)}),
        QString());
}

void CLS_TestResourceRecords::shouldDefaultStaffFields()
{
    STRCT_Staff stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(stItem.m_iField1, -1);
    QCOMPARE(stItem.m_strField3, std::string("2000-01-01"));
    QCOMPARE(stItem.m_strField4, std::string());
    QCOMPARE(stItem.m_strField5, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_strField2),
                            FIELD(stItem, m_iField1), FIELD(stItem, m_strField3), FIELD(stItem, m_strField4),
                            FIELD(stItem, m_strField5)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultAlarmLinkFields()
{
    STRUCT_AlarmLink stItem;
    QCOMPARE(stItem.m_llField1, 0LL);
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_llField1), FIELD(stItem, m_strField1)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultArmingEventFields()
{
    STRUCT_ArmingEvent stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(stItem.m_iField1, 0);
    QCOMPARE(stItem.m_strField2, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1), FIELD(stItem, m_iField1),
                            FIELD(stItem, m_strField2)}),
             QString());
}

void CLS_TestResourceRecords::shouldDefaultFaceLibItemFields()
{
    STRCT_FaceLibItem stItem;
    QCOMPARE(stItem.m_strField1, std::string());
    QCOMPARE(DescribeOrder({FIELD(stItem, m_blFlag), FIELD(stItem, m_strField1)}), QString());
}

void CLS_TestResourceRecords::shouldDeclareAddedFieldTypes()
{
    QVERIFY((std::is_same<decltype(STRCT_MiddleWareHost::m_llField1), long long>::value));
    QVERIFY((std::is_same<decltype(STRCT_DecoderOutArea::m_llField1), long long>::value));
    QVERIFY((std::is_same<decltype(STRCT_DecoderOutArea::m_llField2), long long>::value));
    QVERIFY((std::is_same<decltype(STRCT_SwitchChan::m_llField1), long long>::value));
    QVERIFY((std::is_same<decltype(STRCT_SwitchChan::m_llField2), long long>::value));
    QVERIFY((std::is_same<decltype(STRUCT_AlarmLink::m_llField1), long long>::value));
    QVERIFY((std::is_same<decltype(STRCT_RecStatus::m_blField1), bool>::value));
    QVERIFY((std::is_same<decltype(STRCT_Staff::m_strField3), std::string>::value));
    QVERIFY((std::is_same<decltype(STRCT_DoorServer::m_iField2), int>::value));
}

void CLS_TestResourceRecords::shouldCopyDerivedRecordWithAllFields()
{
    STRCT_SwitchChan stOriginal;
    FillBaseFields(stOriginal);
    stOriginal.m_iField1 = 7;
    stOriginal.m_strField4 = "four";
    stOriginal.m_llField1 = 99;

    STRCT_SwitchChan stCopy(stOriginal);
    QCOMPARE(stCopy.GetType(), 402);
    QCOMPARE(stCopy.m_strId, stOriginal.m_strId);
    QCOMPARE(stCopy.m_strTail, stOriginal.m_strTail);
    QCOMPARE(stCopy.m_vecValues, stOriginal.m_vecValues);
    QCOMPARE(stCopy.m_iField1, 7);
    QCOMPARE(stCopy.m_strField4, std::string("four"));
    QCOMPARE(stCopy.m_llField1, 99LL);
}

// ---- destruction ---------------------------------------------------------------------------------

namespace {
using PFun_DeleteCounted = int (*)();

template <typename T>
int DeleteCountedThroughBase()
{
    STRCT_CountingRecord<T>::s_iDestroyed = 0;
    STRCT_VideoItem* pItem = new STRCT_CountingRecord<T>;
    delete pItem;
    return STRCT_CountingRecord<T>::s_iDestroyed;
}
} // namespace
Q_DECLARE_METATYPE(PFun_DeleteCounted)

void CLS_TestResourceRecords::shouldRunDerivedAndBaseDestructorsThroughBasePointer_data()
{
    QTest::addColumn<PFun_DeleteCounted>("pfDelete");

    QTest::newRow("STRCT_VideoItem") << &DeleteCountedThroughBase<STRCT_VideoItem>;
    QTest::newRow("STRCT_VideoGroup") << &DeleteCountedThroughBase<STRCT_VideoGroup>;
    QTest::newRow("STRCT_Organize") << &DeleteCountedThroughBase<STRCT_Organize>;
    QTest::newRow("STRCT_Staff") << &DeleteCountedThroughBase<STRCT_Staff>;
}

void CLS_TestResourceRecords::shouldRunDerivedAndBaseDestructorsThroughBasePointer()
{
    QFETCH(PFun_DeleteCounted, pfDelete);
    QCOMPARE(pfDelete(), 1);
}

void CLS_TestResourceRecords::shouldReleaseGroupAndOrganizeLikeBaseThroughBasePointer()
{
    // Given a base item, a group and an organisation with the same heap-held fields,
    // when each is deleted through a base pointer,
    // then each gives back every block it took, the base exactly as the two others.
    const auto ReleaseBalance = [](PFun_MakeItem _pfMake) {
        CLS_AllocationWatch clsWatch;
        STRCT_VideoItem* pItem = _pfMake();
        FillBaseFields(*pItem);
        const long lHeld = clsWatch.LiveBlocks();
        delete pItem;
        return qMakePair(lHeld, clsWatch.LiveBlocks());
    };

    const QPair<long, long> qpairBase = ReleaseBalance(&MakeItem<STRCT_VideoItem>);
    const QPair<long, long> qpairGroup = ReleaseBalance(&MakeItem<STRCT_VideoGroup>);
    const QPair<long, long> qpairOrganize = ReleaseBalance(&MakeItem<STRCT_Organize>);

    QVERIFY2(qpairBase.first > 0, "the filled fields should hold heap blocks");
    QCOMPARE(qpairBase.second, 0L);
    QCOMPARE(qpairGroup, qpairBase);
    QCOMPARE(qpairOrganize, qpairBase);
}

void CLS_TestResourceRecords::shouldDestroyGroupHeldInSharedPtrOfBase()
{
    // No test macro inside the watch: only the records' own blocks are counted there.
    STRCT_CountingRecord<STRCT_VideoGroup>::s_iDestroyed = 0;
    int iType = 0;
    int iDestroyedAtReset = 0;
    bool blExpiredAtReset = false;
    long lLiveAtEnd = -1;
    {
        CLS_AllocationWatch clsWatch;
        std::shared_ptr<STRCT_VideoItem> spRoot(new STRCT_CountingRecord<STRCT_VideoGroup>);
        FillBaseFields(*spRoot);
        std::weak_ptr<STRCT_VideoItem> wpRoot = spRoot;
        iType = wpRoot.lock()->GetType();
        spRoot.reset();
        iDestroyedAtReset = STRCT_CountingRecord<STRCT_VideoGroup>::s_iDestroyed;
        blExpiredAtReset = wpRoot.expired();
        wpRoot.reset(); // the control block goes with the last weak pointer
        lLiveAtEnd = clsWatch.LiveBlocks();
    }
    QCOMPARE(iType, 2);
    QCOMPARE(iDestroyedAtReset, 1);
    QVERIFY(blExpiredAtReset);
    QCOMPARE(lLiveAtEnd, 0L);
}

// ---- change report ---------------------------------------------------------------------------------

void CLS_TestResourceRecords::shouldLeaveChangedInfoEmptyByDefault()
{
    STRCT_CustomTreeChangedInfo stInfo;
    QCOMPARE(stInfo.m_strField1, std::string());
    QCOMPARE(stInfo.m_strField2, std::string());
    QCOMPARE(stInfo.m_strField3, std::string());
}

void CLS_TestResourceRecords::shouldEqualDefaultChangedInfoFromNullPointer()
{
    STRCT_CustomTreeChangedInfo stDefault;
    STRCT_CustomTreeChangedInfo stFromNull(nullptr);
    QCOMPARE(stFromNull.m_strField1, stDefault.m_strField1);
    QCOMPARE(stFromNull.m_strField2, stDefault.m_strField2);
    QCOMPARE(stFromNull.m_strField3, stDefault.m_strField3);
}

void CLS_TestResourceRecords::shouldCopyAllThreeStringsOfChangedInfoFromPointer()
{
    STRCT_CustomTreeChangedInfo stSource;
    stSource.m_strField1 = "first";
    stSource.m_strField2 = "second";
    stSource.m_strField3 = "third";

    STRCT_CustomTreeChangedInfo stInfo(&stSource);
    QCOMPARE(stInfo.m_strField1, std::string("first"));
    QCOMPARE(stInfo.m_strField2, std::string("second"));
    QCOMPARE(stInfo.m_strField3, std::string("third"));
    QCOMPARE(stSource.m_strField1, std::string("first")); // the source keeps its values
}

// ---- channel-like records of the device-management library -----------------------------------------

void CLS_TestResourceRecords::shouldReadChannelNumberOfTestChannelThroughBase()
{
    // Given a channel record of the sibling kind, seen only through the base,
    // then its code is 4, its base fields are the base's, and the int that opens its own fields sits
    // right behind the base, where a reader that knows only the base finds it.
    STRCT_TestChannel stChannel;
    stChannel.m_iChannelNo = 12;
    stChannel.m_strId = "ch-12";
    STRCT_VideoItem* pItem = &stChannel;

    QCOMPARE(pItem->GetType(), 4);
    QCOMPARE(pItem->m_strId, std::string("ch-12"));
    QCOMPARE(pItem->m_iDevBindType, -1);

    const char* pBase = reinterpret_cast<const char*>(pItem);
    QCOMPARE(size_t(At(stChannel.m_iChannelNo) - pBase), sizeof(STRCT_VideoItem));
    int iRead = 0;
    std::memcpy(&iRead, pBase + sizeof(STRCT_VideoItem), sizeof(int));
    QCOMPARE(iRead, 12);
}

QTEST_GUILESS_MAIN(CLS_TestResourceRecords)
#include "tst_resourcerecords.moc"
