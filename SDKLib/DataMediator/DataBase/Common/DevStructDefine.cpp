#include "DevStructDefine.h"

// The virtual operations are defined here, out of line, so that the vtables and type information
// of the records live in this library and a record made on one side of the library's border is
// recognised on the other.

STRCT_VideoItem::STRCT_VideoItem() = default;

int STRCT_VideoItem::GetType()
{
    return 1;
}

STRCT_VideoItem::~STRCT_VideoItem() = default;

int STRCT_VideoGroup::GetType()
{
    return 2;
}

int STRCT_MiddleWareHost::GetType()
{
    return 7;
}

int STRCT_Matrix::GetType()
{
    return 8;
}

int STRCT_MatrixIn::GetType()
{
    return 9;
}

int STRCT_MatrixOut::GetType()
{
    return 10;
}

int STRCT_GIS::GetType()
{
    return 11;
}

int STRCT_DecoderOutArea::GetType()
{
    return 14;
}

int STRCT_ScreenOut::GetType()
{
    return 15;
}

int STRCT_TVLayOut::GetType()
{
    return 44;
}

int STRCT_PlanManage::GetType()
{
    return 45;
}

int STRCT_Plan::GetType()
{
    return 46;
}

int STRCT_DoorServer::GetType()
{
    return 48;
}

int STRCT_DoorController::GetType()
{
    return 49;
}

int STRCT_Door::GetType()
{
    return 50;
}

int STRCT_DoorReader::GetType()
{
    return 51;
}

int STRCT_Stitching::GetType()
{
    return 313;
}

int STRCT_SwitchTemp::GetType()
{
    return 400;
}

int STRCT_SwitchTimeTemp::GetType()
{
    return 401;
}

int STRCT_SwitchChan::GetType()
{
    return 402;
}

int STRCT_RecStatus::GetType()
{
    return 403;
}

int STRCT_DiskStatus::GetType()
{
    return 404;
}

int STRCT_ArmTemp::GetType()
{
    return 500;
}

int STRUCT_AlarmLink::GetType()
{
    return 501;
}

int STRUCT_ArmingEvent::GetType()
{
    return 502;
}

int STRCT_Staff::GetType()
{
    return 503;
}

int STRCT_Organize::GetType()
{
    return 504;
}

int STRCT_FaceLibItem::GetType()
{
    return 505;
}

int STRUCT_PersonItem::GetType()
{
    return 507;
}

STRCT_CustomTreeChangedInfo::STRCT_CustomTreeChangedInfo() = default;

STRCT_CustomTreeChangedInfo::STRCT_CustomTreeChangedInfo(STRCT_CustomTreeChangedInfo* _pInfo)
{
    if (_pInfo == nullptr)
        return;
    m_strField1 = _pInfo->m_strField1;
    m_strField2 = _pInfo->m_strField2;
    m_strField3 = _pInfo->m_strField3;
}
