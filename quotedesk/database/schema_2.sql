-- Drafts, removal that can be undone, and a column for whether a quote is allocated, which saves reading its
-- funds.
ALTER TABLE quotes ADD COLUMN Allocated BOOLEAN NOT NULL DEFAULT FALSE;
UPDATE quotes SET Allocated = (
    SELECT count(*) > 0 AND coalesce(sum(F.Amount), 0) = quotes.Amount
    FROM quote_funds F WHERE F.QuoteID = quotes.QuoteID);
ALTER TABLE quotes ADD COLUMN SaveKey TEXT NOT NULL DEFAULT '';
ALTER TABLE quotes ADD COLUMN RemovedIn BIGINT;
CREATE INDEX quotes_by_client ON quotes (ClientID);
CREATE INDEX quotes_by_save ON quotes (SaveKey);
CREATE TABLE drafts (
    DraftKey TEXT PRIMARY KEY,
    InstanceID BIGINT NOT NULL,
    Person TEXT NOT NULL,
    Kept TEXT NOT NULL,
    Content TEXT NOT NULL
);
