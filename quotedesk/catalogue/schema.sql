-- The catalogue's tables. The columns are those of the source files beside this one; ProductGroups and
-- OfferedBy are lists of numbers separated by one blank. Rows keep the order of their source file.
CREATE TABLE products (
    ProductID INTEGER PRIMARY KEY,
    ProductGroupID INTEGER NOT NULL,
    ProductName TEXT NOT NULL,
    ProductName_AFR TEXT NOT NULL
);
CREATE TABLE group_types (
    GroupTypeID INTEGER NOT NULL UNIQUE,
    GroupTypeDesc TEXT NOT NULL,
    GroupTypeDesc_AFR TEXT NOT NULL
);
CREATE TABLE fund_groups (
    FundGroupID INTEGER NOT NULL UNIQUE,
    GroupTypeID INTEGER NOT NULL REFERENCES group_types (GroupTypeID),
    FundGroupName TEXT NOT NULL,
    FundGroupName_AFR TEXT NOT NULL,
    ProductGroups TEXT NOT NULL,
    OfferedBy TEXT NOT NULL
);
CREATE TABLE funds (
    FundID INTEGER NOT NULL,
    FundGroupID INTEGER NOT NULL REFERENCES fund_groups (FundGroupID),
    FundName TEXT NOT NULL,
    FundName_AFR TEXT NOT NULL,
    MainframeID TEXT NOT NULL,
    MinimumInitialAmount REAL NOT NULL DEFAULT 0,
    MinimumSchedAmount REAL NOT NULL DEFAULT 0,
    BuySellRate REAL NOT NULL DEFAULT 0,
    ManRate REAL NOT NULL DEFAULT 0,
    UnderlyingManRate REAL NOT NULL DEFAULT 0,
    GuaranteeRate REAL NOT NULL DEFAULT 0,
    TrustRate REAL NOT NULL DEFAULT 0,
    FundTerm INTEGER NOT NULL DEFAULT 0,
    InternationalFund BOOLEAN NOT NULL DEFAULT 0,
    AllowAsGuarantee BOOLEAN NOT NULL DEFAULT 0,
    Benchmark TEXT NOT NULL DEFAULT '',
    BenchmarkPerf TEXT NOT NULL DEFAULT '',
    MinPerfFee TEXT NOT NULL DEFAULT '',
    MaxPerfFee TEXT NOT NULL DEFAULT '',
    FundSheetURL TEXT NOT NULL DEFAULT '',
    UNIQUE (FundID, FundGroupID)
);
CREATE INDEX funds_of_group ON funds (FundGroupID);
CREATE TABLE fund_messages (
    FundGroupID INTEGER NOT NULL REFERENCES fund_groups (FundGroupID),
    FundID INTEGER NOT NULL,
    Question TEXT NOT NULL,
    UNIQUE (FundGroupID, FundID)
);
