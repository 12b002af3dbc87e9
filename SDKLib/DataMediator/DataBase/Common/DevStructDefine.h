#pragma once
// Resource objects: the device-management library's model of the installation, shared with the
// tree widgets in memory. STRCT_VideoItem is the common base; every record derives from it
// directly and tells its kind through GetType(). Strings hold UTF-8.
//
// Ownership: resource objects belong to the device-management library, which also defines the
// records of the codes 3 (host), 4 (video channel), 5 (alarm input), 6 (alarm output),
// 12 (decoder), 13 (decoder output) and 17 (decoder input); those are not declared here. Their
// channel-like kinds (4, 5, 6, 13, 17) open their own fields with an int, the channel number; with
// the base laid out as below it sits at offset sizeof(STRCT_VideoItem) of the object (the base's tail
// padding is too short for an int), which the resource record tests hold on to.
// The tree widgets read the base fields, GetType() and that int, nothing else: the added fields of
// the records below are carried for the other modules of the client.
//
// No locks: an object is shared read-only while a tree is built from it.

#include <string>
#include <vector>

// Common base of all resource objects. GetType() comes first among the virtual operations and the
// destructor second; the sibling library's records are laid out against this order.
struct STRCT_VideoItem
{
    STRCT_VideoItem();
    virtual int GetType();
    virtual ~STRCT_VideoItem();

    std::string m_strId;       // id of the resource; an item with an empty id is left out of a tree
    std::string m_strName;     // caption
    std::string m_strParentId; // id of the parent
    long long m_llValue = 0;
    std::string m_strText1;
    std::string m_strText2;
    int m_iOrderNo = 0;      // order among siblings
    std::string m_strTreeId; // id of the resource's place in the tree
    std::vector<int> m_vecValues;
    int m_iStatus = 0; // on-line state
    int m_iValue = 0;
    std::string m_strExtend; // second string of the resource
    int m_iDevBindType = -1; // device bind type; 2, 3, 4 pad, car, way; -1 none
    std::string m_strTail;
    int m_iCount = 1;
    bool m_blFlag = true;
};

// Group (code 2): the inner node of a tree, and the root. The tree widgets make temporary roots of
// this kind themselves, held in a std::shared_ptr<STRCT_VideoItem>.
struct STRCT_VideoGroup : public STRCT_VideoItem
{
    int GetType() override;
};

// Middleware host (code 7).
struct STRCT_MiddleWareHost : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    int m_iField1 = 0;
    std::string m_strField2;
    std::string m_strField3;
    long long m_llField1 = 0;
};

// Matrix (code 8).
struct STRCT_Matrix : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    int m_iField1 = 3000;
    int m_iField2 = 3000;
};

// Matrix input (code 9).
struct STRCT_MatrixIn : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    std::string m_strField2;
    int m_iField1 = 0;
    std::string m_strField3;
};

// Matrix output (code 10).
struct STRCT_MatrixOut : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    int m_iField1 = 0;
    std::string m_strField2;
};

// Map (code 11).
struct STRCT_GIS : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    int m_iField1 = 0;
};

// Area of a decoder output (code 14).
struct STRCT_DecoderOutArea : public STRCT_VideoItem
{
    int GetType() override;

    long long m_llField1 = 0;
    long long m_llField2 = 0;
    int m_iField1 = 0;
    std::string m_strField1;
};

// Screen output (code 15).
struct STRCT_ScreenOut : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    std::string m_strField2;
    int m_iField1 = 0;
};

// TV wall layout (code 44).
struct STRCT_TVLayOut : public STRCT_VideoItem
{
    int GetType() override;
};

// Plan group (code 45).
struct STRCT_PlanManage : public STRCT_VideoItem
{
    int GetType() override;
};

// Plan (code 46).
struct STRCT_Plan : public STRCT_VideoItem
{
    int GetType() override;
};

// Door server (code 48).
struct STRCT_DoorServer : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    int m_iField1 = 9000;
    std::string m_strField2;
    std::string m_strField3;
    int m_iField2 = 8000;
    std::string m_strField4;
    std::string m_strField5;
};

// Door controller (code 49).
struct STRCT_DoorController : public STRCT_VideoItem
{
    int GetType() override;
};

// Door (code 50).
struct STRCT_Door : public STRCT_VideoItem
{
    int GetType() override;
};

// Door reader (code 51).
struct STRCT_DoorReader : public STRCT_VideoItem
{
    int GetType() override;
};

// Stitching (code 313).
struct STRCT_Stitching : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
};

// Switch template (code 400).
struct STRCT_SwitchTemp : public STRCT_VideoItem
{
    int GetType() override;

    int m_iField1 = 0;
    std::string m_strField1;
    std::string m_strField2;
};

// Switch time template (code 401).
struct STRCT_SwitchTimeTemp : public STRCT_VideoItem
{
    int GetType() override;

    // Kept unset by the default constructor, as the device-management library leaves it: whoever
    // fills the record writes it before anyone reads it.
    int m_iField1;
    std::string m_strField1;
    std::string m_strField2;
    std::string m_strField3;
    std::string m_strField4;
};

// Switch channel (code 402).
struct STRCT_SwitchChan : public STRCT_VideoItem
{
    int GetType() override;

    int m_iField1 = -1;
    std::string m_strField1;
    std::string m_strField2;
    std::string m_strField3;
    std::string m_strField4;
    int m_iField2 = 5;
    long long m_llField1 = 30;
    long long m_llField2 = 0;
};

// Recording status (code 403).
struct STRCT_RecStatus : public STRCT_VideoItem
{
    int GetType() override;

    int m_iField1 = 0;
    bool m_blField1 = false;
};

// Disk status (code 404).
struct STRCT_DiskStatus : public STRCT_VideoItem
{
    int GetType() override;

    int m_iField1 = 0;
};

// Arming template (code 500).
struct STRCT_ArmTemp : public STRCT_VideoItem
{
    int GetType() override;
};

// Alarm link (code 501).
struct STRUCT_AlarmLink : public STRCT_VideoItem
{
    int GetType() override;

    long long m_llField1 = 0;
    std::string m_strField1;
};

// Arming event (code 502).
struct STRUCT_ArmingEvent : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    int m_iField1 = 0;
    std::string m_strField2;
};

// Staff member (code 503).
struct STRCT_Staff : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
    std::string m_strField2;
    int m_iField1 = -1;
    std::string m_strField3 = "2000-01-01";
    std::string m_strField4;
    std::string m_strField5;
};

// Organisation (code 504).
struct STRCT_Organize : public STRCT_VideoItem
{
    int GetType() override;
};

// Face library entry (code 505).
struct STRCT_FaceLibItem : public STRCT_VideoItem
{
    int GetType() override;

    std::string m_strField1;
};

// Person (code 507).
struct STRUCT_PersonItem : public STRCT_VideoItem
{
    int GetType() override;
};

// Report of a change in a custom tree. A plain record, not a resource object.
struct STRCT_CustomTreeChangedInfo
{
    STRCT_CustomTreeChangedInfo();
    // Copies all three strings of _pInfo; a null pointer leaves them empty.
    explicit STRCT_CustomTreeChangedInfo(STRCT_CustomTreeChangedInfo* _pInfo);

    std::string m_strField1;
    std::string m_strField2;
    std::string m_strField3;
};
