#pragma once
// Catches what the process writes to the standard error stream (file descriptor 2) between
// construction and Take(), in a temporary file. One at a time; the test's thread only.

#include <QByteArray>
#include <QFile>
#include <QTemporaryFile>

#include <cstdio>

#include <unistd.h>

class CLS_StderrCapture
{
public:
    CLS_StderrCapture()
    {
        m_tmpFile.open();
        std::fflush(stderr);
        m_iSavedFd = dup(2);
        dup2(m_tmpFile.handle(), 2);
    }

    ~CLS_StderrCapture() { Restore(); }

    CLS_StderrCapture(const CLS_StderrCapture&) = delete;
    CLS_StderrCapture& operator=(const CLS_StderrCapture&) = delete;

    // Everything caught so far; stderr is the real one again afterwards.
    QByteArray Take()
    {
        Restore();
        QFile file(m_tmpFile.fileName());
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

private:
    void Restore()
    {
        if (m_iSavedFd < 0) {
            return;
        }
        std::fflush(stderr);
        dup2(m_iSavedFd, 2);
        close(m_iSavedFd);
        m_iSavedFd = -1;
    }

    QTemporaryFile m_tmpFile;
    int m_iSavedFd = -1;
};
