-- A column for whether a quote allocates more than its investment, which saves reading its funds.
ALTER TABLE quotes ADD COLUMN OverAllocated BOOLEAN NOT NULL DEFAULT FALSE;
-- Less than half a hundredth over 100 % comes from rounding. The next save of a quote calculates this exactly.
UPDATE quotes SET OverAllocated = (
    SELECT CASE WHEN quotes.ByAmount THEN coalesce(sum(F.Amount), 0) > quotes.Amount
                ELSE coalesce(sum(F.FundPercent), 0) >= 1000050 END
    FROM quote_funds F WHERE F.QuoteID = quotes.QuoteID)
WHERE NOT Allocated;
