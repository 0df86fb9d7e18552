earlier
