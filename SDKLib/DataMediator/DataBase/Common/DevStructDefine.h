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

/// Common base of all resource objects: one host, channel, group or other item of the installation.
///
/// GetType() comes first among the virtual operations and the destructor second; the sibling
/// library's records are laid out against this order, and against the field order below, so neither
/// may change. The tree widgets copy the fields they need (ids, name, order, status, bind type,
/// extend text) into their own nodes and keep no pointer to the object.
///
/// Ownership: the device layer owns the objects and hands them out as raw or weak pointers; a tree
/// holds one only for the length of a build or a change. The only ones a tree makes itself are
/// temporary STRCT_VideoGroup roots. Threads: no locks. The device layer is to leave a record alone
/// once handed out (the reference one replaces it by a changed copy); so kept, a record may be read
/// from any thread that holds a pointer to it, the tree's status thread included.
struct STRCT_VideoItem
{
    /// Makes an empty item: empty strings and values, bind type -1, count 1, flag true.
    STRCT_VideoItem();
    /// Type code of the record kind, the only way to tell which record stands behind a base pointer.
    /// The base returns 1, a code no tree shows; each derived record returns its own code (2 group,
    /// 3 host, 4 video channel, 5 alarm input, 6 alarm output, 12 decoder, 13 decoder output,
    /// 17 decoder input, and the codes of the records below). Reads nothing; any thread.
    virtual int GetType();
    /// Virtual, so that a record deleted through a base pointer (as the trees' temporary roots in a
    /// std::shared_ptr<STRCT_VideoItem>) is destroyed as its own kind.
    virtual ~STRCT_VideoItem();

    /// Id of the resource, unique in the installation; the node's device id and the data of its row.
    /// An item with an empty id is left out of a tree.
    std::string m_strId;
    /// Caption, the row's text and tooltip. A tree root shows the root name given to the tree
    /// instead, where one is given.
    std::string m_strName;
    /// Id of the parent resource (its m_strId), empty at the top. The node's parent in the tree:
    /// rows find their parents by it, so they only hang together where tree ids equal resource ids.
    std::string m_strParentId;
    /// Carried for the device layer; not read by the tree.
    long long m_llValue = 0;
    /// Carried for the device layer; not read by the tree.
    std::string m_strText1;
    /// Carried for the device layer; not read by the tree.
    std::string m_strText2;
    /// Order among siblings (1, 2, ...), the row's sort number. A video channel whose order is 0
    /// sorts by its channel number; in a build from weak pointers the channel-like rows always sort
    /// by channel number, grouped by kind.
    int m_iOrderNo = 0;
    /// Id of the resource's place in the tree: the row id and the key of the resource maps, unique
    /// among all items. At a root the row id is m_strId instead.
    std::string m_strTreeId;
    /// Carried for the device layer; not read by the tree.
    std::vector<int> m_vecValues;
    /// On-line state: 0 off line, 1 on line, 2 no channel state (a video channel's own icon). Picks
    /// the icon of hosts, channels and bound items; the status thread keeps it for video channels.
    int m_iStatus = 0;
    /// Carried for the device layer; not read by the tree.
    int m_iValue = 0;
    /// Second string of the resource, copied into the node; the word search matches it besides the
    /// name.
    std::string m_strExtend;
    /// Device bind type; 2, 3, 4 pad, car, way; -1 none. A bound item gets the icon of its kind, and
    /// a tree given a set of bind types leaves out every item whose value is not in it.
    int m_iDevBindType = -1;
    /// Carried for the device layer; not read by the tree.
    std::string m_strTail;
    /// Carried for the device layer; not read by the tree.
    int m_iCount = 1;
    /// Carried for the device layer; not read by the tree. Last field of the base.
    bool m_blFlag = true;
};

/// Group (code 2): the inner node of a tree, and the root. The tree widgets make temporary roots of
/// this kind themselves, held in a std::shared_ptr<STRCT_VideoItem>. Adds no fields to the base.
struct STRCT_VideoGroup : public STRCT_VideoItem
{
    /// Returns 2, the code of a group.
    int GetType() override;
};

/// Middleware host (code 7). Its added fields are carried for the device layer, which alone gives
/// them meaning; the tree neither reads nor writes them.
struct STRCT_MiddleWareHost : public STRCT_VideoItem
{
    /// Returns 7, the code of a middleware host.
    int GetType() override;

    std::string m_strField1;  ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;        ///< Carried for the device layer; not read by the tree.
    std::string m_strField2;  ///< Carried for the device layer; not read by the tree.
    std::string m_strField3;  ///< Carried for the device layer; not read by the tree.
    long long m_llField1 = 0; ///< Carried for the device layer; not read by the tree.
};

/// Matrix (code 8). Its added fields are carried for the device layer; the tree does not read them.
struct STRCT_Matrix : public STRCT_VideoItem
{
    /// Returns 8, the code of a matrix.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 3000;    ///< Carried for the device layer; not read by the tree.
    int m_iField2 = 3000;    ///< Carried for the device layer; not read by the tree.
};

/// Matrix input (code 9). Its added fields are carried for the device layer; the tree does not read
/// them.
struct STRCT_MatrixIn : public STRCT_VideoItem
{
    /// Returns 9, the code of a matrix input.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
    std::string m_strField3; ///< Carried for the device layer; not read by the tree.
};

/// Matrix output (code 10). Its added fields are carried for the device layer; the tree does not
/// read them.
struct STRCT_MatrixOut : public STRCT_VideoItem
{
    /// Returns 10, the code of a matrix output.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
};

/// Map (code 11). Its added fields are carried for the device layer; the tree does not read them.
struct STRCT_GIS : public STRCT_VideoItem
{
    /// Returns 11, the code of a map.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
};

/// Area of a decoder output (code 14). Not channel-like: no channel number follows the base. Its
/// added fields are carried for the device layer; the tree does not read them.
struct STRCT_DecoderOutArea : public STRCT_VideoItem
{
    /// Returns 14, the code of an area of a decoder output.
    int GetType() override;

    long long m_llField1 = 0; ///< Carried for the device layer; not read by the tree.
    long long m_llField2 = 0; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;        ///< Carried for the device layer; not read by the tree.
    std::string m_strField1;  ///< Carried for the device layer; not read by the tree.
};

/// Screen output (code 15). Its added fields are carried for the device layer; the tree does not
/// read them.
struct STRCT_ScreenOut : public STRCT_VideoItem
{
    /// Returns 15, the code of a screen output.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
};

/// TV wall layout (code 44). Adds no fields to the base.
struct STRCT_TVLayOut : public STRCT_VideoItem
{
    /// Returns 44, the code of a TV wall layout.
    int GetType() override;
};

/// Plan group (code 45). Adds no fields to the base.
struct STRCT_PlanManage : public STRCT_VideoItem
{
    /// Returns 45, the code of a plan group.
    int GetType() override;
};

/// Plan (code 46). Adds no fields to the base.
struct STRCT_Plan : public STRCT_VideoItem
{
    /// Returns 46, the code of a plan.
    int GetType() override;
};

/// Door server (code 48). Its added fields are carried for the device layer; the tree does not read
/// them.
struct STRCT_DoorServer : public STRCT_VideoItem
{
    /// Returns 48, the code of a door server.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 9000;    ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
    std::string m_strField3; ///< Carried for the device layer; not read by the tree.
    int m_iField2 = 8000;    ///< Carried for the device layer; not read by the tree.
    std::string m_strField4; ///< Carried for the device layer; not read by the tree.
    std::string m_strField5; ///< Carried for the device layer; not read by the tree.
};

/// Door controller (code 49). Adds no fields to the base.
struct STRCT_DoorController : public STRCT_VideoItem
{
    /// Returns 49, the code of a door controller.
    int GetType() override;
};

/// Door (code 50). Adds no fields to the base.
struct STRCT_Door : public STRCT_VideoItem
{
    /// Returns 50, the code of a door.
    int GetType() override;
};

/// Door reader (code 51). Adds no fields to the base.
struct STRCT_DoorReader : public STRCT_VideoItem
{
    /// Returns 51, the code of a door reader.
    int GetType() override;
};

/// Stitching (code 313). Its added field is carried for the device layer; the tree does not read it.
struct STRCT_Stitching : public STRCT_VideoItem
{
    /// Returns 313, the code of a stitching.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
};

/// Switch template (code 400). Its added fields are carried for the device layer; the tree does not
/// read them.
struct STRCT_SwitchTemp : public STRCT_VideoItem
{
    /// Returns 400, the code of a switch template.
    int GetType() override;

    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
};

/// Switch time template (code 401). Its added fields are carried for the device layer; the tree does
/// not read them.
struct STRCT_SwitchTimeTemp : public STRCT_VideoItem
{
    /// Returns 401, the code of a switch time template.
    int GetType() override;

    /// Carried for the device layer; not read by the tree. Kept unset by the default constructor, as
    /// the device-management library leaves it: whoever fills the record writes it before anyone
    /// reads or copies it.
    int m_iField1;
    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
    std::string m_strField3; ///< Carried for the device layer; not read by the tree.
    std::string m_strField4; ///< Carried for the device layer; not read by the tree.
};

/// Switch channel (code 402). Not channel-like: no channel number follows the base. Its added fields
/// are carried for the device layer; the tree does not read them.
struct STRCT_SwitchChan : public STRCT_VideoItem
{
    /// Returns 402, the code of a switch channel.
    int GetType() override;

    int m_iField1 = -1;        ///< Carried for the device layer; not read by the tree.
    std::string m_strField1;   ///< Carried for the device layer; not read by the tree.
    std::string m_strField2;   ///< Carried for the device layer; not read by the tree.
    std::string m_strField3;   ///< Carried for the device layer; not read by the tree.
    std::string m_strField4;   ///< Carried for the device layer; not read by the tree.
    int m_iField2 = 5;         ///< Carried for the device layer; not read by the tree.
    long long m_llField1 = 30; ///< Carried for the device layer; not read by the tree.
    long long m_llField2 = 0;  ///< Carried for the device layer; not read by the tree.
};

/// Recording status (code 403). Its added fields are carried for the device layer; the tree does not
/// read them (a row's on-line state is m_iStatus of the base).
struct STRCT_RecStatus : public STRCT_VideoItem
{
    /// Returns 403, the code of a recording status.
    int GetType() override;

    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
    bool m_blField1 = false; ///< Carried for the device layer; not read by the tree.
};

/// Disk status (code 404). Its added field is carried for the device layer; the tree does not read
/// it.
struct STRCT_DiskStatus : public STRCT_VideoItem
{
    /// Returns 404, the code of a disk status.
    int GetType() override;

    int m_iField1 = 0; ///< Carried for the device layer; not read by the tree.
};

/// Arming template (code 500). Adds no fields to the base.
struct STRCT_ArmTemp : public STRCT_VideoItem
{
    /// Returns 500, the code of an arming template.
    int GetType() override;
};

/// Alarm link (code 501). Its added fields are carried for the device layer; the tree does not read
/// them.
struct STRUCT_AlarmLink : public STRCT_VideoItem
{
    /// Returns 501, the code of an alarm link.
    int GetType() override;

    long long m_llField1 = 0; ///< Carried for the device layer; not read by the tree.
    std::string m_strField1;  ///< Carried for the device layer; not read by the tree.
};

/// Arming event (code 502). Its added fields are carried for the device layer; the tree does not
/// read them.
struct STRUCT_ArmingEvent : public STRCT_VideoItem
{
    /// Returns 502, the code of an arming event.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = 0;       ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
};

/// Staff member (code 503). Its added fields are carried for the device layer; the tree does not
/// read them.
struct STRCT_Staff : public STRCT_VideoItem
{
    /// Returns 503, the code of a staff member.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
    std::string m_strField2; ///< Carried for the device layer; not read by the tree.
    int m_iField1 = -1;      ///< Carried for the device layer; not read by the tree.
    /// Carried for the device layer; not read by the tree. Defaults to the date text "2000-01-01".
    std::string m_strField3 = "2000-01-01";
    std::string m_strField4; ///< Carried for the device layer; not read by the tree.
    std::string m_strField5; ///< Carried for the device layer; not read by the tree.
};

/// Organisation (code 504). Adds no fields to the base.
struct STRCT_Organize : public STRCT_VideoItem
{
    /// Returns 504, the code of an organisation.
    int GetType() override;
};

/// Face library entry (code 505). Its added field is carried for the device layer; the tree does not
/// read it.
struct STRCT_FaceLibItem : public STRCT_VideoItem
{
    /// Returns 505, the code of a face library entry.
    int GetType() override;

    std::string m_strField1; ///< Carried for the device layer; not read by the tree.
};

/// Person (code 507). Adds no fields to the base.
struct STRUCT_PersonItem : public STRCT_VideoItem
{
    /// Returns 507, the code of a person.
    int GetType() override;
};

/// Report of a change in a custom tree. A plain record, not a resource object: no virtual
/// operations, no type code, freely copied. Its three strings are carried for the modules that
/// exchange the report; the tree widgets do not read them.
struct STRCT_CustomTreeChangedInfo
{
    /// Makes a report with all three strings empty.
    STRCT_CustomTreeChangedInfo();
    /// Copies all three strings of _pInfo; a null pointer leaves them empty, as the default
    /// constructor does. The record pointed to stays the caller's and is only read.
    explicit STRCT_CustomTreeChangedInfo(STRCT_CustomTreeChangedInfo* _pInfo);

    std::string m_strField1; ///< First string of the report; not read by the tree.
    std::string m_strField2; ///< Second string of the report; not read by the tree.
    std::string m_strField3; ///< Third string of the report; not read by the tree.
};
