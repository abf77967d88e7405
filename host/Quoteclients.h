#pragma once

#include "host/Zelclasses.h"

#include <QDate>
#include <QPointer>

#include <vector>

class TBaseClients;

/// One client of the adviser. The setters accept any text; TfrmEditClient checks what a user enters. Code
/// that keeps a client beyond one call keeps a QPointer, which becomes nil when the client is deleted.
class ZEL_HOST_EXPORT TBaseClient : public TPersistent
{
    Q_OBJECT
    Q_PROPERTY(QString Surname READ Get_Surname WRITE Set_Surname NOTIFY Changed)
    Q_PROPERTY(QString FirstNames READ Get_FirstNames WRITE Set_FirstNames NOTIFY Changed)
    Q_PROPERTY(QString IDNumber READ Get_IDNumber WRITE Set_IDNumber NOTIFY Changed)
    Q_PROPERTY(QDate DateOfBirth READ Get_DateOfBirth WRITE Set_DateOfBirth NOTIFY Changed)
    Q_PROPERTY(QString EMail READ Get_EMail WRITE Set_EMail NOTIFY Changed)
    Q_PROPERTY(QString Telephone READ Get_Telephone WRITE Set_Telephone NOTIFY Changed)
public:
    /// A client that is in no list.
    explicit TBaseClient(const QString &surname = {}, const QString &firstNames = {});
    /// Takes the client out of its list first.
    ~TBaseClient() override;

    QString Get_Surname() const { return m_surname; }
    void Set_Surname(const QString &value);
    QString Get_FirstNames() const { return m_firstNames; }
    void Set_FirstNames(const QString &value);
    QString Get_IDNumber() const { return m_idNumber; }
    void Set_IDNumber(const QString &value);
    QDate Get_DateOfBirth() const { return m_dateOfBirth; } ///< invalid when not known
    void Set_DateOfBirth(QDate value);
    QString Get_EMail() const { return m_eMail; }
    void Set_EMail(const QString &value);
    QString Get_Telephone() const { return m_telephone; }
    void Set_Telephone(const QString &value);

    /// The client's text in lists: "Surname, First names".
    virtual QString DisplayText() const;
    /// Copies the details of another client.
    void Assign(const QObject *source) override;

Q_SIGNALS:
    /// One of the details has changed.
    void Changed();

private:
    friend class TBaseClients;
    template <class T> void change(T &field, const T &value);

    QPointer<TBaseClients> m_list;
    QString m_surname;
    QString m_firstNames;
    QString m_idNumber;
    QDate m_dateOfBirth;
    QString m_eMail;
    QString m_telephone;
};

/// A list of clients. The master list owns its clients. A list linked to a master always shows the master's
/// clients, passes additions and deletions on to the master, and owns no clients.
class ZEL_HOST_EXPORT TBaseClients : public TZelClass
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit TBaseClients(QObject *parent = nullptr);
    /// Deletes the clients that the list owns.
    ~TBaseClients() override;

    int Count() const; ///< How many clients the list shows.
    /// The client at @p index. Throws EListError outside 0..Count-1.
    TBaseClient *Client(int index) const;
    /// The position of @p client; -1 when it is not in the list.
    int IndexOf(const TBaseClient *client) const;
    /// Appends a client that is in no list; the master list takes ownership. Throws EListError for nil.
    TBaseClient *Add(std::unique_ptr<TBaseClient> client);
    /// Takes @p client out of the list and deletes it. Throws EListError when it is not in the list.
    void Delete(TBaseClient *client);

    /// Between BeginUpdate and EndUpdate, Changed is held back; the outermost EndUpdate emits it once.
    void BeginUpdate();
    void EndUpdate();

Q_SIGNALS:
    /// Clients were added or removed. A removed client is no longer in the list. It is still alive, unless
    /// BeginUpdate held the signal back.
    void Changed();

protected:
    /// Links this list to the client list @p source; throws EConvertError when @p source is not a client
    /// list.
    void SetUpFrom(TZelClass *source, bool linked) override;

private:
    friend class TBaseClient;
    void forget(TBaseClient *client);
    void announce();

    std::vector<TBaseClient *> m_clients;
    QPointer<TBaseClients> m_master;
    bool m_linked = false;
    int m_updates = 0;
    bool m_changed = false;
};
