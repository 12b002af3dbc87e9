#include "CLS_DeviceTreeAccessible.h"

#include "CLS_TreeAccessibility.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"

#include <QPointer>
#include <QTreeWidgetItem>

namespace {

constexpr int CONST_iIdRole = Qt::UserRole; // the row's tree id, as the base tree stores it

constexpr int CONST_iTypeGroup = 2;
constexpr int CONST_iTypeHost = 3;
constexpr int CONST_iTypeChannel = 4;
constexpr int CONST_iChannelNoVideo = 2;

// Bind types whose icon shows a fault unless the status is 1: pad, car and way.
bool IsBound(int _iBindType)
{
    return _iBindType == 2 || _iBindType == 3 || _iBindType == 4;
}

} // namespace

CLS_DeviceTreeAccessible::CLS_DeviceTreeAccessible(CLS_WgtTreeWidget* _pPanel,
                                                   const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                                                   CLS_WgtDeviceTree* _pTree)
    : QObject(_pTree), m_pPanel(_pPanel), m_pNodes(_pNodes), m_pTree(_pTree)
{
    CLS_TreeAccessibility* pAccessibility = _pPanel != nullptr ? _pPanel->GetAccessibility() : nullptr;
    if (pAccessibility == nullptr)
        return;
    QPointer<CLS_DeviceTreeAccessible> pSelf(this);
    pAccessibility->SetRowDescriber([pSelf](const QTreeWidgetItem* _pRow) {
        const QString qstrId = _pRow->data(0, CONST_iIdRole).toString();
        const QString qstrWords = pSelf != nullptr ? pSelf->Describe(qstrId) : QString();
        return !qstrWords.isEmpty() ? qstrWords : CLS_TreeAccessibility::DefaultRowDescription(_pRow);
    });
}

CLS_DeviceTreeAccessible::~CLS_DeviceTreeAccessible() = default;

void CLS_DeviceTreeAccessible::SetTreeName(const QString& _qstrName)
{
    if (m_pPanel != nullptr)
        m_pPanel->SetAccessibleTreeName(_qstrName);
}

QString CLS_DeviceTreeAccessible::Describe(const QString& _qstrTreeId) const
{
    if (m_pNodes == nullptr || _qstrTreeId.isEmpty())
        return QString();
    auto it = m_pNodes->constFind(_qstrTreeId);
    if (it == m_pNodes->cend())
        return QString();
    QStringList qlstParts{KindText(it.value())};
    const QString qstrState = StateText(it.value());
    if (!qstrState.isEmpty())
        qlstParts << qstrState;
    int iOnline = 0;
    int iTotal = 0;
    if (m_pTree != nullptr && m_pTree->GetShowChannelCounts() &&
        m_pTree->GetChannelCounts(_qstrTreeId, iOnline, iTotal) == 0 && iTotal > 0)
        qlstParts << tr("acc_counts").arg(iOnline).arg(iTotal);
    return qlstParts.join(tr("acc_separator"));
}

QString CLS_DeviceTreeAccessible::KindText(const CLS_CustomTreeNode& _node)
{
    switch (_node.m_iType) {
    case CONST_iTypeGroup:
        return tr("acc_kind_group");
    case CONST_iTypeHost:
        return tr("acc_kind_host");
    case CONST_iTypeChannel:
        return tr("acc_kind_channel");
    case 5:
        return tr("acc_kind_alarm_in");
    case 6:
        return tr("acc_kind_alarm_out");
    case 7:
        return tr("acc_kind_middleware");
    case 8:
        return tr("acc_kind_matrix");
    case 9:
        return tr("acc_kind_matrix_in");
    case 10:
        return tr("acc_kind_matrix_out");
    case 11:
        return tr("acc_kind_map");
    case 12:
        return tr("acc_kind_decoder");
    case 13:
        return tr("acc_kind_decoder_out");
    case 14:
        return tr("acc_kind_decoder_area");
    case 15:
        return tr("acc_kind_screen_out");
    case 17:
        return tr("acc_kind_decoder_in");
    case 44:
        return tr("acc_kind_tv_wall");
    case 45:
        return tr("acc_kind_plan_group");
    case 46:
        return tr("acc_kind_plan");
    case 48:
        return tr("acc_kind_door_server");
    default:
        return tr("acc_kind_resource");
    }
}

QString CLS_DeviceTreeAccessible::StateText(const CLS_CustomTreeNode& _node)
{
    // As the icon: a bound kind's picture overrides the type's, and tests for on line (1) where the
    // type's tests for off line (0).
    if (IsBound(_node.m_iDevBindType))
        return _node.m_iStatus == 1 ? tr("acc_state_online") : tr("acc_state_fault");
    if (_node.m_iType == CONST_iTypeChannel && _node.m_iStatus == CONST_iChannelNoVideo)
        return tr("acc_state_no_video");
    if (_node.m_iType == CONST_iTypeChannel || _node.m_iType == CONST_iTypeHost)
        return _node.m_iStatus == 0 ? tr("acc_state_offline") : tr("acc_state_online");
    return QString();
}
