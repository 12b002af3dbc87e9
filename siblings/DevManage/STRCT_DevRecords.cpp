#include "STRCT_DevRecords.h"

int STRCT_DevHost::GetType()
{
    return 3;
}

int STRCT_DevChannel::GetType()
{
    return 4;
}

int STRCT_DevAlarmIn::GetType()
{
    return 5;
}

int STRCT_DevAlarmOut::GetType()
{
    return 6;
}

int STRCT_DevDecoder::GetType()
{
    return 12;
}

int STRCT_DevDecoderOut::GetType()
{
    return 13;
}

int STRCT_DevDecoderIn::GetType()
{
    return 17;
}

std::shared_ptr<STRCT_VideoItem> MakeDevRecord(int _iType)
{
    switch (_iType) {
    case 2:
        return std::make_shared<STRCT_VideoGroup>();
    case 3:
        return std::make_shared<STRCT_DevHost>();
    case 4:
        return std::make_shared<STRCT_DevChannel>();
    case 5:
        return std::make_shared<STRCT_DevAlarmIn>();
    case 6:
        return std::make_shared<STRCT_DevAlarmOut>();
    case 12:
        return std::make_shared<STRCT_DevDecoder>();
    case 13:
        return std::make_shared<STRCT_DevDecoderOut>();
    case 17:
        return std::make_shared<STRCT_DevDecoderIn>();
    default:
        return nullptr;
    }
}

namespace {

template <typename T>
std::shared_ptr<STRCT_VideoItem> CopyAs(const std::shared_ptr<STRCT_VideoItem>& _spItem)
{
    return std::make_shared<T>(static_cast<const T&>(*_spItem));
}

} // namespace

std::shared_ptr<STRCT_VideoItem> CloneDevRecord(const std::shared_ptr<STRCT_VideoItem>& _spItem)
{
    if (!_spItem) {
        return nullptr;
    }
    switch (_spItem->GetType()) {
    case 2:
        return CopyAs<STRCT_VideoGroup>(_spItem);
    case 3:
        return CopyAs<STRCT_DevHost>(_spItem);
    case 4:
        return CopyAs<STRCT_DevChannel>(_spItem);
    case 5:
        return CopyAs<STRCT_DevAlarmIn>(_spItem);
    case 6:
        return CopyAs<STRCT_DevAlarmOut>(_spItem);
    case 12:
        return CopyAs<STRCT_DevDecoder>(_spItem);
    case 13:
        return CopyAs<STRCT_DevDecoderOut>(_spItem);
    case 17:
        return CopyAs<STRCT_DevDecoderIn>(_spItem);
    default:
        return nullptr;
    }
}

int* DevRecordChannelNo(STRCT_VideoItem* _pItem)
{
    if (nullptr == _pItem) {
        return nullptr;
    }
    switch (_pItem->GetType()) {
    case 4:
        return &static_cast<STRCT_DevChannel*>(_pItem)->m_iChannelNo;
    case 5:
        return &static_cast<STRCT_DevAlarmIn*>(_pItem)->m_iChannelNo;
    case 6:
        return &static_cast<STRCT_DevAlarmOut*>(_pItem)->m_iChannelNo;
    case 13:
        return &static_cast<STRCT_DevDecoderOut*>(_pItem)->m_iChannelNo;
    case 17:
        return &static_cast<STRCT_DevDecoderIn*>(_pItem)->m_iChannelNo;
    default:
        return nullptr;
    }
}
