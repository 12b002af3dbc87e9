#include "I_CustomTreeManage.h"

I_CustomTreeManage::I_CustomTreeManage(QObject* parent) : QObject(parent) {}

I_CustomTreeManage::~I_CustomTreeManage() = default;
