-- The tables of version 1, for SQLite and PostgreSQL. This file must not change: databases of every age begin
-- with it. Later changes are in the files with higher numbers.
-- Amounts and percentages are whole ten-thousandths. Times are UTC as ISO 8601 text.
-- A ";" at the end of a line ends a statement.
CREATE TABLE store_state (
    ChangeCount BIGINT NOT NULL,
    LastID BIGINT NOT NULL
);
INSERT INTO store_state (ChangeCount, LastID) VALUES (0, 0);
CREATE TABLE clients (
    ClientID BIGINT PRIMARY KEY,
    Surname TEXT NOT NULL,
    FirstNames TEXT NOT NULL,
    IDNumber TEXT NOT NULL,
    DateOfBirth TEXT NOT NULL,
    EMail TEXT NOT NULL,
    Telephone TEXT NOT NULL
);
CREATE TABLE quotes (
    QuoteID BIGINT PRIMARY KEY,
    Revision INTEGER NOT NULL,
    ProductID INTEGER NOT NULL,
    ClientID BIGINT REFERENCES clients (ClientID),
    Description TEXT NOT NULL,
    Amount BIGINT NOT NULL,
    ByAmount BOOLEAN NOT NULL,
    AskedWorldOGS BOOLEAN NOT NULL,
    AskedOGS BOOLEAN NOT NULL,
    AskedBulwarkWorld BOOLEAN NOT NULL,
    AskedWorldOGSInternational BOOLEAN NOT NULL,
    Changed TEXT NOT NULL,
    ChangedBy TEXT NOT NULL
);
CREATE TABLE quote_details (
    QuoteID BIGINT NOT NULL REFERENCES quotes (QuoteID) ON DELETE CASCADE,
    DetailName TEXT NOT NULL,
    DetailValue TEXT NOT NULL,
    PRIMARY KEY (QuoteID, DetailName)
);
CREATE TABLE quote_funds (
    QuoteID BIGINT NOT NULL REFERENCES quotes (QuoteID) ON DELETE CASCADE,
    Position INTEGER NOT NULL,
    FundID INTEGER NOT NULL,
    FundName TEXT NOT NULL,
    Amount BIGINT NOT NULL,
    FundPercent BIGINT NOT NULL,
    PRIMARY KEY (QuoteID, Position)
);
-- The catalogue. The columns are those of its source files, RowNo is the order there. ProductGroups and
-- OfferedBy are lists of numbers separated by one blank.
CREATE TABLE products (
    RowNo INTEGER NOT NULL,
    ProductID INTEGER PRIMARY KEY,
    ProductGroupID INTEGER NOT NULL,
    ProductName TEXT NOT NULL,
    ProductName_AFR TEXT NOT NULL
);
CREATE TABLE group_types (
    RowNo INTEGER NOT NULL,
    GroupTypeID INTEGER PRIMARY KEY,
    GroupTypeDesc TEXT NOT NULL,
    GroupTypeDesc_AFR TEXT NOT NULL
);
CREATE TABLE fund_groups (
    RowNo INTEGER NOT NULL,
    FundGroupID INTEGER PRIMARY KEY,
    GroupTypeID INTEGER NOT NULL REFERENCES group_types (GroupTypeID),
    FundGroupName TEXT NOT NULL,
    FundGroupName_AFR TEXT NOT NULL,
    ProductGroups TEXT NOT NULL,
    OfferedBy TEXT NOT NULL
);
CREATE TABLE funds (
    RowNo INTEGER NOT NULL,
    FundID INTEGER NOT NULL,
    FundGroupID INTEGER NOT NULL REFERENCES fund_groups (FundGroupID),
    FundName TEXT NOT NULL,
    FundName_AFR TEXT NOT NULL,
    MainframeID TEXT NOT NULL,
    MinimumInitialAmount NUMERIC(15,4) NOT NULL DEFAULT 0,
    MinimumSchedAmount NUMERIC(15,4) NOT NULL DEFAULT 0,
    BuySellRate NUMERIC(15,4) NOT NULL DEFAULT 0,
    ManRate NUMERIC(15,4) NOT NULL DEFAULT 0,
    UnderlyingManRate NUMERIC(15,4) NOT NULL DEFAULT 0,
    GuaranteeRate NUMERIC(15,4) NOT NULL DEFAULT 0,
    TrustRate NUMERIC(15,4) NOT NULL DEFAULT 0,
    FundTerm INTEGER NOT NULL DEFAULT 0,
    InternationalFund BOOLEAN NOT NULL DEFAULT FALSE,
    AllowAsGuarantee BOOLEAN NOT NULL DEFAULT FALSE,
    Benchmark TEXT NOT NULL DEFAULT '',
    BenchmarkPerf TEXT NOT NULL DEFAULT '',
    MinPerfFee TEXT NOT NULL DEFAULT '',
    MaxPerfFee TEXT NOT NULL DEFAULT '',
    FundSheetURL TEXT NOT NULL DEFAULT '',
    UNIQUE (FundGroupID, FundID)
);
CREATE INDEX funds_by_id ON funds (FundID);
CREATE TABLE fund_messages (
    RowNo INTEGER NOT NULL,
    FundGroupID INTEGER NOT NULL REFERENCES fund_groups (FundGroupID),
    FundID INTEGER NOT NULL,
    Question TEXT NOT NULL,
    UNIQUE (FundGroupID, FundID)
);
