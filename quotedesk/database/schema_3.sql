-- A bin for deleted quotes, tables for the products and product groups of a fund group, and a key of the last
-- change instead of a counter. ":now" is the time of the upgrade.
ALTER TABLE store_state DROP COLUMN ChangeCount;
ALTER TABLE store_state ADD COLUMN LastChange TEXT NOT NULL DEFAULT '';
ALTER TABLE quotes ADD COLUMN DeletedAt TEXT;
ALTER TABLE quotes ADD COLUMN DeletedBy TEXT NOT NULL DEFAULT '';
UPDATE quotes SET DeletedAt = ':now' WHERE RemovedIn IS NOT NULL;
ALTER TABLE quotes DROP COLUMN RemovedIn;
CREATE TABLE fund_group_product_groups (
    ProductGroupID INTEGER NOT NULL,
    FundGroupID INTEGER NOT NULL REFERENCES fund_groups (FundGroupID),
    PRIMARY KEY (ProductGroupID, FundGroupID)
);
CREATE TABLE fund_group_products (
    ProductID INTEGER NOT NULL,
    FundGroupID INTEGER NOT NULL REFERENCES fund_groups (FundGroupID),
    PRIMARY KEY (ProductID, FundGroupID)
);
-- Each step removes the last number of the lists. UNION, not UNION ALL, so that it also ends on an invalid
-- list.
INSERT INTO fund_group_product_groups (ProductGroupID, FundGroupID)
    WITH RECURSIVE lists (FundGroupID, Numbers) AS (
        SELECT FundGroupID, ProductGroups FROM fund_groups
        UNION
        SELECT FundGroupID, rtrim(rtrim(Numbers, '0123456789'), ' ') FROM lists)
    SELECT DISTINCT CAST(substr(Numbers, length(rtrim(Numbers, '0123456789')) + 1) AS INTEGER), FundGroupID
    FROM lists WHERE rtrim(Numbers, '0123456789') <> Numbers;
INSERT INTO fund_group_products (ProductID, FundGroupID)
    WITH RECURSIVE lists (FundGroupID, Numbers) AS (
        SELECT FundGroupID, OfferedBy FROM fund_groups
        UNION
        SELECT FundGroupID, rtrim(rtrim(Numbers, '0123456789'), ' ') FROM lists)
    SELECT DISTINCT CAST(substr(Numbers, length(rtrim(Numbers, '0123456789')) + 1) AS INTEGER), FundGroupID
    FROM lists WHERE rtrim(Numbers, '0123456789') <> Numbers;
ALTER TABLE fund_groups DROP COLUMN ProductGroups;
ALTER TABLE fund_groups DROP COLUMN OfferedBy;
