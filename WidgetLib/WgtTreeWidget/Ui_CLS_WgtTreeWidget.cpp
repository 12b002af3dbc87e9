#include "Ui_CLS_WgtTreeWidget.h"

#include "CLS_LineEdit.h"

#include <QCoreApplication>
#include <QFont>
#include <QListWidget>
#include <QMetaObject>
#include <QSpacerItem>
#include <QVBoxLayout>
#include <QWidget>

void Ui_CLS_WgtTreeWidget::setupUi(QWidget* _pForm)
{
    if (_pForm->objectName().isEmpty())
        _pForm->setObjectName(QString::fromUtf8("CLS_WgtTreeWidget"));
    _pForm->resize(384, 610);

    verticalLayout = new QVBoxLayout(_pForm);
    verticalLayout->setObjectName(QString::fromUtf8("verticalLayout"));
    verticalLayout->setContentsMargins(0, -1, 0, -1); // -1: the style's default

    qlineedtQueryInput = new CLS_LineEdit(_pForm);
    qlineedtQueryInput->setObjectName(QString::fromUtf8("qlineedtQueryInput"));
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHorizontalStretch(0);
    policy.setVerticalStretch(0);
    policy.setHeightForWidth(qlineedtQueryInput->sizePolicy().hasHeightForWidth());
    qlineedtQueryInput->setSizePolicy(policy);
    qlineedtQueryInput->setMinimumSize(QSize(0, 30));
    qlineedtQueryInput->setMaximumSize(QSize(16777215, 30));
    qlineedtQueryInput->setSizeIncrement(QSize(0, 33));
    QFont font;
    font.setFamily(QString::fromUtf8("Arial"));
    font.setPointSize(9);
    qlineedtQueryInput->setFont(font);
    qlineedtQueryInput->setFocusPolicy(Qt::ClickFocus);
    qlineedtQueryInput->setContextMenuPolicy(Qt::NoContextMenu);
    qlineedtQueryInput->setStyleSheet(QString());
    qlineedtQueryInput->setFrame(false);
    verticalLayout->addWidget(qlineedtQueryInput);

    qlistWgtQueryResult = new QListWidget(_pForm);
    qlistWgtQueryResult->setObjectName(QString::fromUtf8("qlistWgtQueryResult"));
    QSizePolicy listPolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    listPolicy.setHeightForWidth(qlistWgtQueryResult->sizePolicy().hasHeightForWidth());
    qlistWgtQueryResult->setSizePolicy(listPolicy);
    qlistWgtQueryResult->setMinimumSize(QSize(0, 0));
    qlistWgtQueryResult->setMaximumSize(QSize(16777215, 180));
    verticalLayout->addWidget(qlistWgtQueryResult);

    verticalSpacer = new QSpacerItem(20, 10, QSizePolicy::Minimum, QSizePolicy::Fixed);
    verticalLayout->addItem(verticalSpacer);

    qvboxlayoutTreeLayout = new QVBoxLayout();
    qvboxlayoutTreeLayout->setObjectName(QString::fromUtf8("qvboxlayoutTreeLayout"));
    verticalLayout->addLayout(qvboxlayoutTreeLayout);

    verticalSpacer_2 = new QSpacerItem(17, 17, QSizePolicy::Minimum, QSizePolicy::Fixed);
    verticalLayout->addItem(verticalSpacer_2);

    retranslateUi(_pForm);
    QMetaObject::connectSlotsByName(_pForm);
}

void Ui_CLS_WgtTreeWidget::retranslateUi(QWidget* _pForm)
{
    _pForm->setWindowTitle(QCoreApplication::translate("CLS_WgtTreeWidget", "Form", nullptr));
    qlineedtQueryInput->setPlaceholderText(QString());
}
