prefix beta_
